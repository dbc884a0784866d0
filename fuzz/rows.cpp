// Fuzz target: rows, lines and numbers against what is written down plainly.

#include <bit>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "input.hpp"
#include "output/core/rows.hpp"

namespace dsettlement::fuzz {

namespace {

using namespace output;  // NOLINT(google-build-using-namespace)

[[noreturn]] void fail(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

// text.splitlines()
template <typename Character>
std::vector<Text<Character>> plain_lines(Text<Character> text) {
  std::vector<Text<Character>> lines;
  const Character* begin = text.begin;
  for (const Character* c = text.begin; c != text.end; ++c) {
    if (!is_line_boundary(*c)) continue;
    lines.push_back({begin, c});
    if (*c == '\r' && c + 1 != text.end && c[1] == '\n') ++c;
    begin = c + 1;
  }
  if (begin != text.end) lines.push_back({begin, text.end});
  return lines;
}

// line.split()
template <typename Character>
std::vector<Text<Character>> plain_fields(Text<Character> line) {
  std::vector<Text<Character>> fields;
  for (const Character* c = line.begin; c != line.end;) {
    const Character* const begin = c;
    while (c != line.end && !is_space(*c)) ++c;
    if (c != begin) fields.push_back({begin, c});
    while (c != line.end && is_space(*c)) ++c;
  }
  return fields;
}

// A number that was read must be the one that the C library reads, to the bit.
template <typename Character>
void check_number(double number, Text<Character> text) {
  const std::string ascii(text.begin, text.end);
  char* end = nullptr;
  const double expected = std::strtod(ascii.c_str(), &end);
  if (*end != '\0') fail("a number was read that is none");
  if (std::bit_cast<std::uint64_t>(number) != std::bit_cast<std::uint64_t>(expected)) {
    fail("a number was read wrongly");
  }
}

template <typename Character>
void compare(Text<Character> text) {
  const auto lines = plain_lines(text);
  if (lines.size() != count_lines(text)) fail("the number of lines differs");
  std::size_t index = 0;
  for_each_line(text, [&](Text<Character> line) {
    if (index == lines.size() || line.begin != lines[index].begin || line.end != lines[index].end) {
      fail("a line differs");
    }
    ++index;
  });
  if (index != lines.size()) fail("lines are missing");

  RowReader<Character> reader(text);
  for (const auto& line : lines) {
    if (!reader.has_row()) fail("a row is missing");
    double number = 0.0;
    Text<Character> other;
    for (const auto& field : plain_fields(line)) {
      switch (reader.next(number, other)) {
        case Field::number:
          check_number(number, field);
          break;
        case Field::other:
          if (other.begin != field.begin || other.end != field.end) fail("a field differs");
          if (read_real(field)) fail("a number was not read");
          break;
        case Field::none:
          fail("a field is missing");
      }
    }
    if (reader.next(number, other) != Field::none) fail("there is a field too many");
    reader.end_row();
  }
  if (reader.has_row()) fail("there is a row too many");
}

}  // namespace

}  // namespace dsettlement::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  dsettlement::fuzz::with_text_of(data, size, [](auto text) { dsettlement::fuzz::compare(text); });
  return 0;
}
