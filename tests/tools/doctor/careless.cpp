// A library that loads but is built without care: see how it is linked.
#include <cstdlib>

extern "C" {

extern const char kBuiltAt[];
const char kBuiltAt[] = "/home/somebody/plugin.cpp";

int REALPluginMain() { return std::getenv(kBuiltAt) != nullptr; }

}  // extern "C"
