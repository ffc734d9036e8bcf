#pragma once

/// Gives back the 71 KiB that MinGW's C++ library, which is linked into this DLL, sets aside when
/// the DLL is loaded: what exceptions are thrown from when there is no memory. It would stay for
/// good each time a host unloads the DLL. Afterwards nothing may be thrown. Does nothing where the
/// C++ library is a DLL of its own.
void ReleaseExceptionReserve() noexcept;
