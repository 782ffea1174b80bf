#include "platform/posix/RandomGuid.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <random>
#include <string_view>

#include "support/HexCodec.h"

namespace t4::posix {

namespace {

using Bytes = std::array<uint8_t, 16>;

bool FromUrandom(Bytes& bytes) {
  std::ifstream in("/dev/urandom", std::ios::binary);
  return static_cast<bool>(in.read(reinterpret_cast<char*>(bytes.data()), bytes.size()));
}

void FromRandomDevice(Bytes& bytes) {
  std::random_device device;
  for (size_t i = 0; i < bytes.size(); i += 4) {
    const uint32_t word = device();
    for (size_t j = 0; j < 4; ++j) bytes[i + j] = static_cast<uint8_t>(word >> (8 * j));
  }
}

}  // namespace

std::u16string RandomGuid::Make() {
  Bytes bytes{};
  if (!FromUrandom(bytes)) FromRandomDevice(bytes);
  bytes[6] = static_cast<uint8_t>((bytes[6] & 0x0F) | 0x40);  // version 4
  bytes[8] = static_cast<uint8_t>((bytes[8] & 0x3F) | 0x80);  // RFC 4122 variant
  const std::string_view all(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  std::u16string text = u"{";
  static constexpr size_t kGroups[] = {4, 2, 2, 2, 6};
  size_t at = 0;
  for (const size_t group : kGroups) {
    if (at != 0) text += u'-';
    HexCodec::AppendEncoded(all.substr(at, group), text);
    at += group;
  }
  text += u'}';
  return text;
}

}  // namespace t4::posix
