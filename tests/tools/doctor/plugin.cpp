// A correctly built plug-in. It includes no headers, because it is built for macOS too.
extern "C" {

char* getenv(const char* name);

int REALPluginMain() { return getenv("ZKTDEBUG") != nullptr; }

}  // extern "C"
