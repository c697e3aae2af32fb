// By default, the statically linked C++ library prints a description of an uncaught exception to standard error before
// it ends the process, and includes a demangler for this purpose. The plug-in is a guest in the host's process and must
// not print there. It is also smaller without the demangler.
#include <cstdlib>
#include <exception>

namespace __cxxabiv1 {

extern std::terminate_handler __terminate_handler;
std::terminate_handler __terminate_handler = &std::abort;

}  // namespace __cxxabiv1
