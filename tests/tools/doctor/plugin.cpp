// A correctly built plug-in. It includes no headers, because it is built for macOS too.
extern "C" {

static const char kVersionText[] = "@(#)Test 1.2.3, commit 0123456789ab";

char* getenv(const char* name);

// Uses the version text, so that the linker keeps it.
int REALPluginMain() { return getenv(kVersionText) != nullptr; }

}  // extern "C"
