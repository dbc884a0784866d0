// The tags that open and close blocks, and the stretches of a text in which they stand.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "output/core/pattern_texts.hpp"
#include "output/core/text.hpp"

namespace dsettlement::output {

// The tags that are looked for. Those that can only stand directly behind another one, such as
// "[Stress Data]", are read in their place and need no index.
enum class Tag : std::uint8_t {
  vertical,
  end_of_vertical,
  depths,
  end_of_depths,
  leakages,
  end_of_leakages,
  drained_layers,
  end_of_drained_layers,
  stresses,
  end_of_column_indication,
  end_of_stress_data,
  time_settlement_per_load,
  end_of_time_settlement_per_load,
  time_dependent_data,
  end_of_time_dependent_data,
  vertical_data_at_time,
  end_of_vertical_data_at_time,
  residual_settlements,
  end_of_data_count,
  end_of_residual_settlement_data,
};

inline constexpr auto tag_names = std::to_array<std::string_view>({
    "[Vertical]",
    "[End of Vertical]",
    "[Depths]",
    "[End of Depths]",
    "[Leakages]",
    "[End of Leakages]",
    "[Drained Layers]",
    "[End of Drained Layers]",
    "[Stresses]",
    "[End of Column Indication]",
    "[End of Stress Data]",
    "[Time-Settlement per Load]",
    "[End of Time-Settlement per Load]",
    "[Time-dependent Data]",
    "[End of Time dependent Data]",
    "[Vertical Data at Time]",
    "[End of Vertical Data at Time]",
    "[RESIDUAL SETTLEMENTS]",
    "[END OF DATA COUNT]",
    "[END OF RESIDUAL SETTLEMENT DATA]",
});

constexpr std::string_view name_of(Tag tag) noexcept {
  return tag_names[static_cast<std::size_t>(tag)];
}

static_assert(name_of(Tag::end_of_residual_settlement_data) == tag_names.back());

// A block of numbers, one per line, between two tags.
struct LineBlock {
  Pattern pattern;
  Tag opening;
  Tag closing;
};

inline constexpr auto line_blocks = std::to_array<LineBlock>({
    {Pattern::depths, Tag::depths, Tag::end_of_depths},
    {Pattern::leakages, Tag::leakages, Tag::end_of_leakages},
    {Pattern::drained_layers, Tag::drained_layers, Tag::end_of_drained_layers},
});

constexpr LineBlock line_block_of(Pattern pattern) {
  std::size_t place = 0;
  while (line_blocks[place].pattern != pattern) ++place;  // no constant past the end
  return line_blocks[place];
}

// Where one tag stands: its offset from the beginning of the indexed text.
struct TagMark {
  std::uint64_t offset : 58;
  std::uint64_t tag : 6;

  [[nodiscard]] bool is(Tag other) const noexcept {
    return tag == static_cast<std::uint64_t>(other);
  }
};

// A stretch of an indexed text with the tags that stand in it whole.
template <typename Character>
class Section {
 public:
  Section(Text<Character> text, std::span<const TagMark> tags)
      : text_(text), origin_(text.begin), tags_(tags) {}

  [[nodiscard]] Text<Character> text() const noexcept { return text_; }
  [[nodiscard]] std::span<const TagMark> tags() const noexcept { return tags_; }

  [[nodiscard]] const Character* place(const TagMark& mark) const noexcept {
    return origin_ + mark.offset;
  }
  [[nodiscard]] static std::size_t length(const TagMark& mark) noexcept {
    return tag_names[mark.tag].size();
  }

  // The tags that begin at `place` or behind it.
  [[nodiscard]] std::span<const TagMark> tags_from(const Character* place) const noexcept {
    const auto first = std::lower_bound(
        tags_.begin(), tags_.end(), place,
        [this](const TagMark& mark, const Character* at) { return this->place(mark) < at; });
    return {first, tags_.end()};
  }

  // A part of this section.
  [[nodiscard]] Section part(Text<Character> text) const noexcept {
    Section part(text, tags_from(text.begin));
    part.origin_ = origin_;
    // Tags don't overlap, so those that end in time come first.
    const auto last = std::partition_point(
        part.tags_.begin(), part.tags_.end(),
        [&](const TagMark& mark) { return part.place(mark) + length(mark) <= text.end; });
    part.tags_ = part.tags_.first(static_cast<std::size_t>(last - part.tags_.begin()));
    return part;
  }

 private:
  Text<Character> text_;
  const Character* origin_;
  std::span<const TagMark> tags_;
};

}  // namespace dsettlement::output
