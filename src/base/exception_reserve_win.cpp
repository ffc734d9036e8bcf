#include "base/exception_reserve_win.h"

#include <version>  // defines __GLIBCXX__

#ifdef __GLIBCXX__

namespace __gnu_cxx {
// NOLINTNEXTLINE(bugprone-reserved-identifier): the C++ library's; made for checkers of leaks.
void __freeres();
}  // namespace __gnu_cxx

void ReleaseExceptionReserve() noexcept { __gnu_cxx::__freeres(); }

#else

void ReleaseExceptionReserve() noexcept {}

#endif
