// The first stage of the reader alone: finds the marks of all verticals, and builds nothing.

#include <Python.h>

#include "output/core/find_marks.hpp"

namespace {

using namespace dsettlement::output;  // NOLINT(google-build-using-namespace)

std::size_t mark(Text<Narrow> text) {
  const std::vector<TagMark> tags = index_tags(text);
  const Section<Narrow> whole(text, tags);
  VerticalMarks<Narrow> marks;
  std::size_t count = 0;
  while (const auto vertical = find_vertical(whole.part(text))) {
    find_vertical_marks(whole.part(*vertical), marks);
    count += marks.times.size();
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
