// The marks: where the parts of a result text begin and end. They are what the first stage of the
// reader finds and the second builds from.
//
// A mark is a stretch of the text, not a copy, and nothing in it has been read yet: lines, fields
// and numbers are the second stage's. A block that is absent, or that doesn't fit its pattern, has
// no mark.
#pragma once

#include "output/core/text.hpp"

namespace dsettlement::output {

// "  60.0 =  X co-ordinate": all that stands on the line before the number's end, and the axis.
template <typename Character>
struct CoordinateMarks {
  Text<Character> value;
  Text<Character> axis;
};

// A table with named columns: one header per line, one row per line.
template <typename Character>
struct TableMarks {
  Text<Character> headers;
  Text<Character> rows;
};

// [Time-Settlement per Load]: the digits of its two counts, and its rows.
template <typename Character>
struct TimeSettlementMarks {
  Text<Character> time_step_count;
  Text<Character> load_step_count;
  Text<Character> rows;
};

// [Vertical Data at Time]: the digits of the time, and the rows.
template <typename Character>
struct TimeMarks {
  Text<Character> time;
  Text<Character> rows;
};

}  // namespace dsettlement::output
