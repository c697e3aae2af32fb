// The statically linked C++ library would describe an uncaught exception on standard error before it ends the process,
// and would bring a demangler for that. A library that is a guest prints nothing there, and is smaller without.
#include <cstdlib>
#include <exception>

namespace __cxxabiv1 {

extern std::terminate_handler __terminate_handler;
std::terminate_handler __terminate_handler = &std::abort;

}  // namespace __cxxabiv1
