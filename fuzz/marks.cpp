// Fuzz target: the finders of marks against the patterns, run by a backtracking matcher.

#include <cstdio>
#include <cstdlib>

#include "backtracking.hpp"
#include "input.hpp"
#include "output/core/pattern_texts.hpp"
#include "output/stage_one/find_marks.hpp"

namespace dsettlement::fuzz {

namespace {

using namespace output;  // NOLINT(google-build-using-namespace)

constexpr std::size_t most_steps = 200'000;
constexpr std::size_t longest = 4096;

// What a pattern comes to: for each match, the stretches that are read of it.
template <typename Character>
using Found = std::vector<std::vector<Text<Character>>>;

template <typename Character>
Found<Character> found(const std::optional<Text<Character>>& mark) {
  return mark ? Found<Character>{{*mark}} : Found<Character>{};
}

template <typename Character>
Found<Character> found(const std::optional<TableMarks<Character>>& table) {
  return table ? Found<Character>{{table->headers, table->rows}} : Found<Character>{};
}

template <typename Character>
Found<Character> find_all_verticals(const Section<Character>& section) {
  Found<Character> all;
  Text<Character> left = section.text();
  while (const auto vertical = find_vertical(section.part(left))) {
    all.push_back({*vertical});
    left.begin = vertical->end;
  }
  return all;
}

template <typename Character>
Found<Character> find_natively(Pattern pattern, const Section<Character>& section) {
  switch (pattern) {
    case Pattern::file_name:
      return found(find_file_path(section.text()));
    case Pattern::results:
      return found(find_results(section.text()));
    case Pattern::vertical:
      return find_all_verticals(section);
    case Pattern::coordinate: {
      std::vector<CoordinateMarks<Character>> coordinates;
      find_coordinates(section.text(), coordinates);
      Found<Character> all;
      for (const auto& mark : coordinates) all.push_back({mark.value, mark.axis});
      return all;
    }
    case Pattern::time_settlement_per_load: {
      const auto mark = find_time_settlement_per_load(section);
      if (!mark) return {};
      return {{mark->time_step_count, mark->load_step_count, mark->rows}};
    }
    case Pattern::stresses:
      return found(find_stresses(section));
    case Pattern::time_dependent_data:
      return found(find_time_dependent_data(section));
    case Pattern::vertical_data_at_time: {
      std::vector<TimeMarks<Character>> times;
      find_times(section, times);
      Found<Character> all;
      for (const auto& mark : times) all.push_back({mark.time, mark.rows});
      return all;
    }
    case Pattern::residual_settlements:
      return found(find_residual_settlements(section));
    default:
      for (const LineBlock& block : line_blocks) {
        if (block.pattern == pattern) return found(find_lines(section, block));
      }
      std::abort();
  }
}

bool is_searched_for_all(Pattern pattern) {
  return pattern == Pattern::vertical || pattern == Pattern::coordinate ||
         pattern == Pattern::vertical_data_at_time;
}

bool is_read_whole(Pattern pattern) {
  return pattern == Pattern::results || pattern == Pattern::vertical;
}

template <typename Character>
Found<Character> find_by_matching(Pattern pattern, const Expression& expression,
                                  Text<Character> text) {
  Found<Character> all;
  Matcher<Character> matcher(expression, text, most_steps);
  const Character* place = text.begin;
  while (auto match = matcher.search(place)) {
    place = match->front().end;
    if (is_read_whole(pattern)) {
      match->resize(1);
    } else {
      match->erase(match->begin());
    }
    all.push_back(std::move(*match));
    if (!is_searched_for_all(pattern)) break;
  }
  return all;
}

template <typename Character>
bool are_equal(const Found<Character>& one, const Found<Character>& other) {
  return std::ranges::equal(one, other, [](const auto& match, const auto& other_match) {
    return std::ranges::equal(match, other_match, [](auto text, auto other_text) {
      return text.begin == other_text.begin && text.end == other_text.end;
    });
  });
}

const std::vector<Expression>& expressions() {
  static const std::vector<Expression> all = [] {
    std::vector<Expression> made;
    for (const PatternDefinition& definition : pattern_definitions) {
      made.emplace_back(definition.text, definition.dot_matches_all);
    }
    return made;
  }();
  return all;
}

// How many texts were compared, and how many not with all patterns because the matcher would have
// taken too long; shown at the end, so that the latter can't become the rule unseen.
class Tally {
 public:
  Tally() = default;
  Tally(const Tally&) = delete;
  Tally& operator=(const Tally&) = delete;
  ~Tally() {
    std::fprintf(stderr, "%zu texts compared, %zu of them not with all patterns\n", texts_,
                 incomplete_);
  }

  void add(bool is_complete) {
    ++texts_;
    if (!is_complete) ++incomplete_;
  }

 private:
  std::size_t texts_ = 0;
  std::size_t incomplete_ = 0;
};

Tally& tally() {
  static Tally the;
  return the;
}

template <typename Character>
void compare(Text<Character> text) {
  bool is_complete = true;
  const std::vector<TagMark> tags = index_tags(text);
  const Section<Character> section(text, tags);
  for (std::size_t i = 0; i < pattern_count; ++i) {
    const auto pattern = static_cast<Pattern>(i);
    const auto native = find_natively(pattern, section);
    try {
      if (are_equal(native, find_by_matching(pattern, expressions()[i], text))) continue;
    } catch (const TooManySteps&) {
      is_complete = false;
      continue;
    }
    std::fprintf(stderr, "the marks differ from the pattern %s\n", pattern_definitions[i].name);
    std::abort();
  }
  tally().add(is_complete);
}

}  // namespace

}  // namespace dsettlement::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > dsettlement::fuzz::longest) return 0;
  dsettlement::fuzz::with_text_of(data, size, [](auto text) { dsettlement::fuzz::compare(text); });
  return 0;
}
