// A plug-in that works, but exports too many functions and contains a path of the build machine.
extern "C" {

char* getenv(const char* name);

extern const char kBuiltAt[];
const char kBuiltAt[] = "/home/somebody/plugin.cpp";

int FunctionWithANameSoLongThatTheOffsetsAfterItInATableOfExportsTakeMoreThanOneByteEachBecauseTheyAreAbove127() {
  return 0;
}

int REALPluginMain() { return getenv(kBuiltAt) != nullptr; }

}  // extern "C"
