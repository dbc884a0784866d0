// Reads the blocks of one vertical.
#pragma once

#include "output/matches.hpp"
#include "output/stage_one/find_marks.hpp"
#include "output/stage_two/tables.hpp"
#include "output/stage_two/time_settlement.hpp"
#include "output/stage_two/time_tables.hpp"

namespace dsettlement::output {

// Lines that are found in their turn, and read as numbers last of all: as a stretch of the
// vertical, or as a text that a pattern gave.
template <typename Character>
struct NumberLines {
  std::optional<Text<Character>> marked;
  host::Ref matched;
};

// The steps of reading one vertical. Their order settles which of several failures is raised. Each
// looks up the pattern of its own block when its turn comes, as the pattern that an application has
// put there may run code of its own; a block whose pattern was not replaced is read natively.
template <typename Character>
class VerticalReader {
 public:
  // Without a section, `source` cannot be read natively, and all its blocks are left to the
  // patterns.
  VerticalReader(const State& state, host::Handle cls, host::Handle source,
                 const Section<Character>* section = nullptr)
      : state_(state), cls_(cls), source_(source), section_(section) {}

  host::Ref read() {
    const State::Names& names = state_.names;
    const host::Ref coordinates = read_coordinates();
    const auto depths = find_lines<Pattern::depths>();
    const auto leakages = find_lines<Pattern::leakages>();
    const auto drained_layers = find_lines<Pattern::drained_layers>();
    const host::Ref stresses = read_stresses();
    const host::Ref time_settlement_per_load = read_time_settlement();
    const host::Ref vertical_data = read_vertical_data();
    return host::Mapping()
        .put(names.coordinates, coordinates)
        .put(names.depths, numbers_of(depths))
        .put(names.leakages, numbers_of(leakages))
        .put(names.drained_layers, numbers_of(drained_layers))
        .put(names.stresses, stresses)
        .put(names.time_settlement_per_load, time_settlement_per_load)
        .put(names.vertical_data, vertical_data)
        .done();
  }

 private:
  host::Ref read_coordinates() {
    if (const host::Ref pattern = to_run<Pattern::coordinate>()) {
      return match_coordinates(state_, pattern, text());
    }
    std::vector<CoordinateMarks<Character>> coordinates;
    find_coordinates(section_->text(), coordinates);
    host::Mapping mapping;
    for (const auto& coordinate : coordinates) {
      mapping.put(host::call_method(python_text(coordinate.axis), state_.names.lower),
                  real_of(coordinate.value));
    }
    return mapping.done();
  }

  template <Pattern block>
  NumberLines<Character> find_lines() {
    constexpr LineBlock tags = line_block_of(block);
    if (const host::Ref pattern = to_run<block>())
      return {{}, match_lines(state_, pattern, text())};
    return {output::find_lines(*section_, tags), {}};
  }

  static host::Ref numbers_of(const NumberLines<Character>& lines) {
    if (lines.marked) return build_numbers(*lines.marked);
    if (!lines.matched) return host::Ref::steal(PyList_New(0));
    return with_text_of(lines.matched, [](auto matched) { return build_numbers(matched); });
  }

  host::Ref read_stresses() {
    if (const host::Ref pattern = to_run<Pattern::stresses>()) {
      return match_stresses(state_, pattern, text());
    }
    const auto stresses = find_stresses(*section_);
    if (!stresses) return host::Mapping().done();
    const Headers headers(stresses->headers);
    return headers.table(build_columns(stresses->rows, headers));
  }

  host::Ref read_time_settlement() {
    if (const host::Ref pattern = to_run<Pattern::time_settlement_per_load>()) {
      return match_time_settlement(state_, pattern, text());
    }
    host::Mapping mapping;
    const auto marks = find_time_settlement_per_load(*section_);
    if (!marks) return mapping.done();
    mapping.put(state_.names.load_step_count, integer_of(marks->load_step_count));
    mapping.put(state_.names.time_step_count, integer_of(marks->time_step_count));
    add_load_columns(mapping, state_.names.time, build_common_columns(marks->rows));
    return mapping.done();
  }

  host::Ref read_vertical_data() {
    if (const host::Ref pattern = to_run<Pattern::time_dependent_data>()) {
      const TimeDependentMatch match = match_time_dependent_data(state_, pattern, text());
      TimeTables tables{match.headers};
      if (const host::Ref times = to_run<Pattern::vertical_data_at_time>(is_readable(match.data))) {
        match_times(state_, times, match.data, tables);
      } else {
        with_text_of(match.data, [&](auto data) {
          const std::vector<TagMark> tags = index_tags(data);
          read_times(Section(data, tags), tables);
        });
      }
      return tables.done();
    }
    const auto marks = find_time_dependent_data(*section_);
    const TableMarks<Character> data = marks.value_or(TableMarks<Character>{});
    TimeTables tables{Headers(data.headers)};
    if (const host::Ref times = to_run<Pattern::vertical_data_at_time>(true)) {
      match_times(state_, times, python_text(data.rows), tables);
    } else if (marks) {
      read_times(section_->part(data.rows), tables);
    }
    return tables.done();
  }

  template <typename CharacterOfData>
  static void read_times(const Section<CharacterOfData>& data, TimeTables& tables) {
    std::vector<TimeMarks<CharacterOfData>> times;
    find_times(data, times);
    for (const auto& block : times) tables.add(real_of(block.time), block.rows);
  }

  template <Pattern pattern>
  [[nodiscard]] host::Ref to_run() const {
    return to_run<pattern>(section_ != nullptr);
  }
  template <Pattern pattern>
  [[nodiscard]] host::Ref to_run(bool is_readable) const {
    static_assert(definition_of(pattern).looked_in == LookedIn::vertical);
    return state_.patterns.to_run(cls_, pattern, is_readable);
  }

  // The vertical as the text that patterns are run on, made when the first of them asks for it.
  host::Handle text() {
    if (!text_) {
      text_ = section_ == nullptr ? host::share(source_) : python_text(source_, section_->text());
    }
    return text_;
  }

  const State& state_;
  host::Handle cls_;
  host::Handle source_;
  const Section<Character>* section_;
  host::Ref text_;
};

}  // namespace dsettlement::output
