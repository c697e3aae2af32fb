// A correctly built plug-in. It includes no headers, because it is built for macOS too.
extern "C" {

__attribute__((used)) static const char kVersionText[] = "@(#)Test 1.2.3, commit 0123456789ab";

char* getenv(const char* name);

int REALPluginMain() { return getenv("ZKTDEBUG") != nullptr; }

}  // extern "C"
