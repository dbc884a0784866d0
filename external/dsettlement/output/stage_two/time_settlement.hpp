// The rows of [Time-Settlement per Load]: time, then one column per load.
#pragma once

#include <algorithm>
#include <vector>

#include "output/stage_two/columns.hpp"

namespace dsettlement::output {

namespace detail {

// Counts the fields of one row and leaves it.
template <typename Character>
std::size_t count_fields(RowReader<Character>& reader) {
  double number = 0.0;
  Text<Character> text;
  std::size_t count = 0;
  while (reader.next(number, text) != Field::none) ++count;
  reader.end_row();
  return count;
}

// The most columns that are worth a list: the fields of the first row, unless the text has no room
// for so many in every row; then those of the shortest.
template <typename Character>
std::size_t estimate_columns(Text<Character> rows, std::size_t row_count) {
  RowReader<Character> reader(rows);
  if (!reader.has_row()) return 0;
  std::size_t columns = count_fields(reader);
  if (has_room_for(rows, row_count, columns)) return columns;
  while (reader.has_row()) columns = std::min(columns, count_fields(reader));
  return columns;
}

}  // namespace detail

// Reads all fields of all rows, row by row, and raises at the first that is no number. The columns
// that come back are those that every row has.
template <typename Character>
[[nodiscard]] std::vector<host::Ref> build_common_columns(Text<Character> rows) {
  const std::size_t row_count = count_lines(rows);
  std::size_t columns = detail::estimate_columns(rows, row_count);
  Columns lists(columns, row_count);

  RowReader<Character> reader(rows);
  double number = 0.0;
  Text<Character> text;
  for (std::size_t row = 0; reader.has_row(); ++row, reader.end_row()) {
    std::size_t column = 0;
    for (Field field = reader.next(number, text); field != Field::none;
         field = reader.next(number, text), ++column) {
      if (field == Field::other) {
        host::Ref value = real_by_host(text);
        if (column < columns) lists.put(column, row, std::move(value));
      } else if (column < columns) {
        lists.put(column, row, number);
      }
    }
    columns = std::min(columns, column);
  }
  std::vector<host::Ref> common = lists.done();
  common.resize(columns);
  return common;
}

// Adds the mapping's keys for the columns: `time`, then `load_1` and onwards. Raises IndexError if
// there is no first column.
void add_load_columns(host::Mapping& mapping, host::Handle time,
                      const std::vector<host::Ref>& columns);

}  // namespace dsettlement::output
