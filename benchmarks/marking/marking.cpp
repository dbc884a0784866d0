// The first stage of the reader alone: finds the marks of all verticals, and builds nothing.

#include <Python.h>

#include "output/stage_one/find_marks.hpp"

namespace {

using namespace dsettlement::output;  // NOLINT(google-build-using-namespace)

std::size_t count_marks(const Section<Narrow>& vertical) {
  std::vector<CoordinateMarks<Narrow>> coordinates;
  std::vector<TimeMarks<Narrow>> times;
  find_coordinates(vertical.text(), coordinates);
  std::size_t count = coordinates.size();
  for (const LineBlock& block : line_blocks) {
    count += find_lines(vertical, block).has_value() ? 1 : 0;
  }
  count += find_stresses(vertical).has_value() ? 1 : 0;
  count += find_time_settlement_per_load(vertical).has_value() ? 1 : 0;
  if (const auto data = find_time_dependent_data(vertical)) {
    find_times(vertical.part(data->rows), times);
  }
  return count + times.size();
}

std::size_t mark(Text<Narrow> text) {
  const std::vector<TagMark> tags = index_tags(text);
  const Section<Narrow> whole(text, tags);
  std::size_t count = 0;
  while (const auto vertical = find_vertical(whole.part(text))) {
    count += count_marks(whole.part(*vertical));
    text.begin = vertical->end;
  }
  return count;
}

}  // namespace

// The number of times in a text of one-byte characters.
extern "C" std::size_t mark_verticals(PyObject* text) {
  const auto* const begin = PyUnicode_1BYTE_DATA(text);
  return mark({begin, begin + PyUnicode_GET_LENGTH(text)});
}
