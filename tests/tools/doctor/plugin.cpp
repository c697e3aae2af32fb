// A plug-in that is built as it should be. Without headers, because it is built for macOS too.
extern "C" {

char* getenv(const char* name);

int REALPluginMain() { return getenv("ZKTDEBUG") != nullptr; }

}  // extern "C"
