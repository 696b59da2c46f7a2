#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace importing {

/// The hash SHA-256 (FIPS 180-4) of a text that comes in pieces.
class Sha256 {
public:
    void Add(std::string_view bytes);
    /// The hash of everything added, as 64 hexadecimal digits. Nothing may be added behind it.
    std::string Finish();

private:
    static constexpr std::size_t blockBytes = 64;

    void AddBlock(const unsigned char* block);

    std::array<std::uint32_t, 8> state_ = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                           0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    std::array<unsigned char, blockBytes> block_ = {};
    std::size_t filled_ = 0;
    std::uint64_t length_ = 0;
};

/// The hash of one text.
std::string Sha256Of(std::string_view bytes);

} // namespace importing
