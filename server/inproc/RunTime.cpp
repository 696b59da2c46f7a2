#include "server/inproc/RunTime.h"

#include <cstddef> // __GLIBCXX__

#ifdef __GLIBCXX__
namespace __gnu_cxx { // NOLINT(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp)
/// libstdc++'s own, which none of its headers declares: gives back what it sets aside for exceptions.
void __freeres(); // NOLINT(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp)
} // namespace __gnu_cxx
#endif

namespace server {

void ReleaseRunTime() noexcept {
#ifdef __GLIBCXX__
    __gnu_cxx::__freeres();
#endif
}

} // namespace server
