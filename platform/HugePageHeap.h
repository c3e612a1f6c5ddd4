#pragma once

// A catalogue of 100,000 entries is a quarter of a gigabyte of small allocations: in 4 KB pages,
// some 40,000 page faults and a fifth of the time to open it. install() grows the C library's heap
// once by half a gigabyte of address space (no memory until touched), marks it for transparent
// huge pages and turns trimming off. Call it first thing in main, before the heap holds much.
namespace HugePageHeap {

void install();

}  // namespace HugePageHeap
