// Columns of numbers out of rows of text.
#pragma once

#include <bit>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "host/object.hpp"
#include "output/core/rows.hpp"
#include "output/stage_two/headers.hpp"
#include "output/stage_two/python_numbers.hpp"

namespace dsettlement::output {

// Lists of one length, one per column, that are filled row by row. Numerals recur, mostly in the
// same place of an earlier table with the same columns, such as depths at each time, and else down
// a column; then the same float stands in both places. That takes less time than a new one, and
// less memory.
class Columns {
 public:
  // `pattern` holds columns of an earlier table, if there is one.
  Columns(std::size_t columns, std::size_t rows, std::span<const host::Ref> pattern = {})
      : pattern_(pattern) {
    lists_.reserve(columns);
    for (std::size_t i = 0; i < columns; ++i) {
      lists_.push_back(host::Ref::steal(PyList_New(static_cast<Py_ssize_t>(rows))));
    }
  }

  void put(std::size_t column, std::size_t row, double number) {
    PyObject* const list = lists_[column].get();
    if (column < pattern_.size()) {
      PyObject* const earlier = pattern_[column].get();
      if (std::cmp_less(row, PyList_GET_SIZE(earlier)) &&
          put_if_equal(list, row, PyList_GET_ITEM(earlier, row), number)) {
        return;
      }
    }
    if (row > 0 && put_if_equal(list, row, PyList_GET_ITEM(list, row - 1), number)) return;
    put(column, row, host::real(number));
  }
  void put(std::size_t column, std::size_t row, host::Ref number) {
    PyList_SET_ITEM(lists_[column].get(), static_cast<Py_ssize_t>(row), number.release());
  }

  [[nodiscard]] std::vector<host::Ref> done() { return std::move(lists_); }

 private:
  static bool put_if_equal(PyObject* list, std::size_t row, PyObject* other, double number) {
    // To the bit: zeros have signs.
    if (std::bit_cast<std::uint64_t>(PyFloat_AS_DOUBLE(other)) !=
        std::bit_cast<std::uint64_t>(number)) {
      return false;
    }
    PyList_SET_ITEM(list, static_cast<Py_ssize_t>(row), Py_NewRef(other));
    return true;
  }

  std::span<const host::Ref> pattern_;
  std::vector<host::Ref> lists_;
};

// True if every row can have so many fields: a field takes a character, and so does what stands
// between two. Where that is not so, some row is too short, and lists need not be made at all;
// without this question a text with many headers and many short rows would ask for lists of the
// size of their product.
template <typename Character>
[[nodiscard]] bool has_room_for(Text<Character> rows, std::size_t row_count,
                                std::size_t columns) noexcept {
  return row_count == 0 || columns <= (rows.size() / row_count + 2) / 2;
}

// The failure that is met first when the columns are read one after the other, while the rows are
// read one after the other.
class FirstFailure {
 public:
  explicit FirstFailure(std::size_t columns) : column_(columns) {}

  // The columns in front of the failure, which are all that still matters.
  [[nodiscard]] std::size_t column() const noexcept { return column_; }

  // Takes the Python error that is set as the failure of a column in front of all others.
  void take(std::size_t column) {
    column_ = column;
    error_ = host::Ref::steal(PyErr_GetRaisedException());
  }

  void raise_if_any() {
    if (!error_) return;
    PyErr_SetRaisedException(error_.release());
    throw host::ErrorSet{};
  }

 private:
  std::size_t column_;
  host::Ref error_;
};

// Reads the first `count` fields of all rows, and calls put(i, row, number) for those in column
// `columns[i]`. Raises what `[float(row.split()[column]) for row in rows]` raises, for one column
// of the `count` after the other.
template <typename Character, typename Put>
void read_columns(Text<Character> rows, std::size_t count, std::span<const std::size_t> columns,
                  Put&& put) {
  FirstFailure failure(count);
  RowReader<Character> reader(rows);
  double number = 0.0;
  Text<Character> text;
  for (std::size_t row = 0; reader.has_row() && failure.column() > 0; ++row, reader.end_row()) {
    std::size_t i = 0;
    for (std::size_t column = 0; column < failure.column(); ++column) {
      const bool is_kept = i < columns.size() && columns[i] == column;
      try {
        const Field field = reader.next(number, text);
        if (field == Field::number) [[likely]] {
          if (is_kept) put(i, row, number);
        } else if (field == Field::other) {
          const host::Ref value = real_by_host(text);  // which may fail, kept or not
          if (is_kept) put(i, row, value);
        } else {
          raise_missing_element();
        }
      } catch (const host::ErrorSet&) {
        failure.take(column);
      }
      if (is_kept) ++i;
    }
  }
  failure.raise_if_any();
}

// The columns of a table that its headers leave standing, as lists with one number per row.
// `pattern` holds those of an earlier table, in which numbers are likely to recur.
template <typename Character>
[[nodiscard]] std::vector<host::Ref> build_columns(Text<Character> rows, const Headers& headers,
                                                   std::span<const host::Ref> pattern = {}) {
  const std::size_t count = headers.column_count();
  if (count == 0) return {};
  const std::size_t row_count = count_lines(rows);
  if (!has_room_for(rows, row_count, count)) {
    read_columns(rows, count, {}, [](std::size_t, std::size_t, const auto&) {});
  }
  Columns lists(headers.columns().size(), row_count, pattern);
  read_columns(
      rows, count, headers.columns(),
      [&](std::size_t i, std::size_t row, const auto& number) { lists.put(i, row, number); });
  return lists.done();
}

}  // namespace dsettlement::output
