#include "ColorNames.h"

#include <array>
#include <cstdlib>

namespace t4::cli {

namespace {

struct Entry {
  const char* name;
  ColorNames::Rgb look;
};

// Approximately the colours Outlook draws for its 25 category colours.
constexpr std::array<Entry, 25> kColors{{
    {"Red", {214, 37, 46}},         {"Orange", {240, 108, 21}},     {"Peach", {255, 202, 76}},
    {"Yellow", {255, 254, 61}},     {"Green", {74, 182, 63}},       {"Teal", {64, 189, 149}},
    {"Olive", {133, 154, 82}},      {"Blue", {50, 103, 184}},       {"Purple", {97, 61, 180}},
    {"Maroon", {163, 78, 120}},     {"Steel", {196, 204, 221}},     {"Dark Steel", {140, 156, 189}},
    {"Gray", {196, 196, 196}},      {"Dark Gray", {165, 165, 165}}, {"Black", {28, 28, 28}},
    {"Dark Red", {175, 30, 37}},    {"Dark Orange", {177, 79, 13}}, {"Dark Peach", {171, 123, 5}},
    {"Dark Yellow", {153, 148, 0}}, {"Dark Green", {53, 121, 43}},  {"Dark Teal", {46, 125, 100}},
    {"Dark Olive", {95, 108, 58}},  {"Dark Blue", {42, 81, 145}},   {"Dark Purple", {80, 50, 143}},
    {"Dark Maroon", {130, 55, 95}},
}};

std::string Squeezed(const std::string& text) {
  std::string out;
  for (const char c : text) {
    if (c == ' ' || c == '-' || c == '_') continue;
    out += (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return out;
}

}  // namespace

std::string ColorNames::Name(int32_t color) {
  if (color == -1) return "None";
  if (color >= 0 && color < static_cast<int32_t>(kColors.size()))
    return kColors[static_cast<size_t>(color)].name;
  return "-";
}

std::optional<ColorNames::Rgb> ColorNames::Look(int32_t color) {
  if (color >= 0 && color < static_cast<int32_t>(kColors.size()))
    return kColors[static_cast<size_t>(color)].look;
  return std::nullopt;
}

std::optional<int32_t> ColorNames::Parse(const std::string& text) {
  const std::string key = Squeezed(text);
  if (key == "none") return -1;
  for (size_t i = 0; i < kColors.size(); ++i) {
    if (Squeezed(kColors[i].name) == key) return static_cast<int32_t>(i);
  }
  char* end = nullptr;
  const long value = std::strtol(text.c_str(), &end, 10);
  if (!text.empty() && end != nullptr && *end == '\0' && value >= -2 && value <= 24)
    return static_cast<int32_t>(value);
  return std::nullopt;
}

}  // namespace t4::cli
