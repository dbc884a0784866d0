// The first stage of the reader: finds the marks, exactly where the patterns of the format find
// them when a backtracking engine runs them, in a time that grows linearly with the text.
#pragma once

#include <optional>
#include <vector>

#include "output/core/marks.hpp"
#include "output/core/tags.hpp"

namespace dsettlement::output {

// The first [Results] block of a file, tags included.
template <typename Character>
[[nodiscard]] std::optional<Text<Character>> find_results(Text<Character> file);

// The path on the first FILENAME line of a file that has a line end behind it.
template <typename Character>
[[nodiscard]] std::optional<Text<Character>> find_file_path(Text<Character> file);

// The first [Vertical] block of a section, tags included. To find them all, look on behind the end
// of each.
template <typename Character>
[[nodiscard]] std::optional<Text<Character>> find_vertical(const Section<Character>& section);

// The parts of a [Vertical] block. Each is looked for by itself in the whole block, so parts may
// overlap.

// The lines that say where the vertical stands, found anywhere in the text.
template <typename Character>
void find_coordinates(Text<Character> text, std::vector<CoordinateMarks<Character>>& coordinates);

// The text between two tags of their own lines, with a line end behind the second: [Depths],
// [Leakages], [Drained Layers].
template <typename Character>
[[nodiscard]] std::optional<Text<Character>> find_lines(const Section<Character>& section,
                                                        Tag opening, Tag closing);

template <typename Character>
[[nodiscard]] std::optional<TimeSettlementMarks<Character>> find_time_settlement_per_load(
    const Section<Character>& section);

template <typename Character>
[[nodiscard]] std::optional<TableMarks<Character>> find_stresses(const Section<Character>& section);

// The headers of [Time-dependent Data], and as `rows` the text that holds its blocks.
template <typename Character>
[[nodiscard]] std::optional<TableMarks<Character>> find_time_dependent_data(
    const Section<Character>& section);

// All [Vertical Data at Time] blocks of a section.
template <typename Character>
void find_times(const Section<Character>& section, std::vector<TimeMarks<Character>>& times);

template <typename Character>
[[nodiscard]] std::optional<TableMarks<Character>> find_residual_settlements(
    const Section<Character>& section);

}  // namespace dsettlement::output
