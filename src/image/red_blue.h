#pragma once

#include <cstddef>
#include <cstdint>

/// Copies `count` pixels of 3 bytes with bytes 0 and 2 exchanged; `target` may be `source`.
void CopyExchangingRedBlue(const std::uint8_t* source, std::size_t count,
                           std::uint8_t* target) noexcept;
