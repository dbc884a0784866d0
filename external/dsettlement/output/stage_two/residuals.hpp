// The mapping of residual settlements per vertical.
#pragma once

#include <vector>

#include "output/stage_two/columns.hpp"
#include "output/stage_two/tables.hpp"

namespace dsettlement::output {

// The lists of one vertical, one per column. Equal headers share a list, to which every row appends
// once for each of them.
[[nodiscard]] std::vector<host::Ref> residual_lists_of(host::Handle residuals,
                                                       host::Handle vertical,
                                                       const std::vector<host::Ref>& headers);

// Adds one row after the other: field 0 is the number of the vertical, the fields behind it go with
// the headers. `headers` are those of the block, less the first.
template <typename Character>
[[nodiscard]] host::Ref build_residuals(const std::vector<host::Ref>& headers,
                                        Text<Character> rows) {
  host::Ref residuals = host::Mapping().done();
  host::Ref vertical;
  std::vector<host::Ref> lists;
  double number = 0.0;
  Text<Character> text;
  for (RowReader<Character> reader(rows); reader.has_row(); reader.end_row()) {
    if (!reader.next_text(text)) raise_missing_element();
    host::Ref read = integer_of(text);
    // Rows of one vertical mostly stand together.
    if (!vertical || !host::compare(vertical, Py_EQ, read)) {
      vertical = std::move(read);
      lists = residual_lists_of(residuals, vertical, headers);
    }
    for (const host::Ref& list : lists) {
      const Field field = reader.next(number, text);
      if (field == Field::none) raise_missing_element();
      const host::Ref value = field == Field::number ? host::real(number) : real_by_host(text);
      host::check(PyList_Append(list.get(), value.get()));
    }
  }
  return residuals;
}

}  // namespace dsettlement::output
