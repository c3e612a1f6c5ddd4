#pragma once

// What every fuzz target sets up once, before its first input.
class FuzzEnvironment {
 public:
  // A Qt application object for the process, and Qt's own warnings silenced: a hostile input
  // makes Qt warn on every run, and printing that slows fuzzing more than the parsing does.
  static void start(const char* program);
};
