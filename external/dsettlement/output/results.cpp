#include "output/results.hpp"

#include "output/matches.hpp"
#include "output/stage_one/find_marks.hpp"
#include "output/stage_two/python_text.hpp"
#include "output/stage_two/residuals.hpp"

namespace dsettlement::output {

using host::Handle;
using host::Mapping;
using host::Ref;

Ref find_results_text(const State& state, Handle cls, Handle file) {
  if (const Ref pattern = state.patterns.to_run(cls, Pattern::results, is_readable(file))) {
    return match_whole(state, pattern, file);
  }
  return with_text_of(file, [&]<typename Character>(Text<Character> text) {
    const auto results = find_results(text);
    return results ? python_text(file, *results) : Ref();
  });
}

Ref find_path_text(const State& state, Handle cls, Handle file) {
  if (const Ref pattern = state.patterns.to_run(cls, Pattern::file_name, is_readable(file))) {
    return match_path(state, pattern, file);
  }
  return with_text_of(file, [&]<typename Character>(Text<Character> text) {
    const auto path = find_file_path(text);
    return path ? python_text(file, *path) : Ref();
  });
}

Ref read_residual_settlements(const State& state, Handle cls, Handle results) {
  if (const Ref pattern =
          state.patterns.to_run(cls, Pattern::residual_settlements, is_readable(results))) {
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
