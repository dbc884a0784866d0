// Texts with numbers that stand elsewhere as constants, put together by the compiler.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace dsettlement::host {

template <std::size_t capacity>
class Filled {
 public:
  // The text with each {} replaced by the next of the numbers.
  template <typename... Numbers>
  explicit constexpr Filled(std::string_view text, Numbers... numbers) {
    (put_next(text, numbers), ...);
    put(text);
  }

  // The characters, for as long as this object lives.
  constexpr operator const char*() const noexcept {  // NOLINT(google-explicit-constructor)
    return characters_.data();
  }
  constexpr operator std::string_view() const noexcept {  // NOLINT(google-explicit-constructor)
    return {characters_.data(), size_};
  }

 private:
  constexpr void put_next(std::string_view& text, auto number) {
    const std::size_t place = text.find("{}");
    put(text.substr(0, place));
    text.remove_prefix(place + 2);
    put(number);
  }

  constexpr void put(char character) { characters_[size_++] = character; }
  constexpr void put(std::string_view text) {
    for (const char character : text) put(character);
  }

  constexpr void put(long number) {
    if (number >= 10) put(number / 10);
    put(static_cast<char>('0' + number % 10));
  }
  // Down to thousandths, and with a decimal at least.
  constexpr void put(double number) {
    if (number < 0) {
      put('-');
      number = -number;
    }
    long thousandths = static_cast<long>(number * 1000);
    if (number * 1000 - static_cast<double>(thousandths) > 0.5) ++thousandths;
    put(thousandths / 1000);
    put('.');
    long left = thousandths % 1000;
    do {
      put(static_cast<char>('0' + left / 100));
      left = left % 100 * 10;
    } while (left > 0);
  }

  std::array<char, capacity> characters_{};  // a null stands behind the last
  std::size_t size_ = 0;
};

// To be kept in a constant: `constexpr auto documentation = host::filled("at most {} [m]", most);`
template <std::size_t size, typename... Numbers>
[[nodiscard]] consteval auto filled(const char (&text)[size], Numbers... numbers) {
  constexpr std::size_t longest_number = 24;
  return Filled<size + longest_number * sizeof...(numbers)>(text, numbers...);
}

}  // namespace dsettlement::host
