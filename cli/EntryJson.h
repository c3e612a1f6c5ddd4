#pragma once

class Entry;
class JsonWriter;
class Store;

// An entry as the command line prints it: "uid", every attribute it holds, "tracks" in
// position order, "links" and the names of its "collections".
void writeEntryJson(JsonWriter& json, Entry& entry, Store& store);
