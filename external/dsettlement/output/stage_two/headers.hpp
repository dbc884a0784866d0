// The header lines of a table, and which of its columns they leave standing.
#pragma once

#include <span>
#include <vector>

#include "host/containers.hpp"
#include "output/core/lines.hpp"
#include "output/stage_two/python_text.hpp"

namespace dsettlement::output {

// Header i belongs to column i. Of equal headers the later column wins, in the place of the first,
// so the columns of all others are never seen: lists for them would take time and memory that the
// result isn't worth, as there may be as many equal headers as the text has lines.
class Headers {
 public:
  template <typename Character>
  explicit Headers(Text<Character> lines) {
    host::Mapping last_columns;
    for_each_line(lines, [&](Text<Character> line) {
      const host::Ref column = host::integer(static_cast<long>(column_count_++));
      last_columns.put(python_text(line), column);
    });
    settle(last_columns.done());
  }

  // The number of columns that a row has to have.
  [[nodiscard]] std::size_t column_count() const noexcept { return column_count_; }

  // The columns that stay, in ascending order.
  [[nodiscard]] std::span<const std::size_t> columns() const noexcept { return columns_; }

  // A mapping of header to list, given the lists of the columns that stay.
  [[nodiscard]] host::Ref table(std::span<const host::Ref> lists) const;

 private:
  void settle(host::Handle last_columns);

  std::size_t column_count_ = 0;
  std::vector<std::size_t> columns_;
  std::vector<host::Ref> names_;     // each once, in the order of the result
  std::vector<std::size_t> places_;  // of each name's column in `columns_`
};

}  // namespace dsettlement::output
