// By default, the statically linked C++ library describes an uncaught exception on standard error before it ends the
// process, and contains a demangler for that. This library is a guest and must not print there, and it is smaller
// without the demangler.
#include <cstdlib>
#include <exception>

namespace __cxxabiv1 {

extern std::terminate_handler __terminate_handler;
std::terminate_handler __terminate_handler = &std::abort;

}  // namespace __cxxabiv1
