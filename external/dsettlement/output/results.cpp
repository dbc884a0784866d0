#include "output/results.hpp"

#include "output/core/find_marks.hpp"
#include "output/matches.hpp"
#include "output/python_text.hpp"
#include "output/residuals.hpp"
#include "output/vertical.hpp"

namespace dsettlement::output {

using host::Handle;
using host::Mapping;
using host::Ref;

namespace {

// Numbers the verticals of a text from 1 and calls make(Section) for the mapping of each.
template <typename Character, typename Make>
Ref for_each_vertical(Text<Character> results, Make&& make) {
  const std::vector<TagMark> tags = index_tags(results);
  const Section<Character> whole(results, tags);
  Mapping verticals;
  Text<Character> left = results;
  for (long number = 1; const auto vertical = find_vertical(whole.part(left)); ++number) {
    verticals.put(host::integer(number), make(whole.part(*vertical)));
    left.begin = vertical->end;
  }
  return verticals.done();
}

// True if `method` is the operation that the class was made with.
bool is_original(const State& state, Handle cls, Handle method) {
  return PyMethod_Check(method) != 0 && PyMethod_GET_SELF(method) == cls &&
         PyMethod_GET_FUNCTION(method) == state.parse_vertical.get();
}

}  // namespace

Ref find_results_text(const State& state, Handle cls, Handle file) {
  if (const Ref pattern = state.patterns.to_run(cls, Pattern::results, is_plain_text(file))) {
    return match_whole(state, pattern, file);
  }
  return with_text_of(file, [&]<typename Character>(Text<Character> text) {
    const auto results = find_results(text);
    return results ? python_text(file, *results) : Ref();
  });
}

Ref find_path_text(const State& state, Handle cls, Handle file) {
  if (const Ref pattern = state.patterns.to_run(cls, Pattern::file_name, is_plain_text(file))) {
    return match_path(state, pattern, file);
  }
  return with_text_of(file, [&]<typename Character>(Text<Character> text) {
    const auto path = find_file_path(text);
    return path ? python_text(file, *path) : Ref();
  });
}

Ref read_verticals(const State& state, Handle cls, Handle results) {
  if (const Ref pattern = state.patterns.to_run(cls, Pattern::vertical, is_plain_text(results))) {
    return match_verticals(state, cls, pattern, results);
  }
  return with_text_of(results, [&]<typename Character>(Text<Character> text) {
    return for_each_vertical(text, [&](const Section<Character>& vertical) {
      const Ref parse = host::get(cls, state.names.parse_vertical);
      if (is_original(state, cls, parse)) return read_vertical(state, cls, results, vertical);
      return host::call(parse, python_text(results, vertical.text()));
    });
  });
}

Ref read_residual_settlements(const State& state, Handle cls, Handle results) {
  if (const Ref pattern =
          state.patterns.to_run(cls, Pattern::residual_settlements, is_plain_text(results))) {
    return match_residual_settlements(state, pattern, results);
  }
  return with_text_of(results, []<typename Character>(Text<Character> text) {
    const std::vector<TagMark> tags = index_tags(text);
    const auto block = find_residual_settlements(Section<Character>(text, tags));
    if (!block) return Mapping().done();
    return build_residuals(but_first(split_lines(block->headers)), block->rows);
  });
}

}  // namespace dsettlement::output
