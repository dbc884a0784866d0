// A free text that runs to the first closing tag which lets the rest of its pattern match.
//
// In a pattern it reads LINE_END (.*?) LINE_END CLOSING_TAG REST, with `.` matching everything.
// What a backtracking engine does with it:
//
// - The text begins behind the first line end. If that is CR LF there are two starts, tried in this
//   order: behind the LF, and between the CR and the LF (`Scanner::text_starts`).
// - From a start, the text grows one character at a time until LINE_END CLOSING_TAG REST fits. The
//   line end in front of a closing tag is CR LF if both characters belong to the text, else the one
//   character that is left. So the candidates are the closing tags in the order in which they
//   stand, each with one end of the text.
// - The second start sees one candidate that the first does not: a closing tag directly behind the
//   LF. That is how an empty block matches with CR LF, with the empty text between CR and LF, and
//   only if no closing tag follows later that suits the first start.
//
// What keeps this linear is a property of all the patterns of the format: REST is a fixed shape
// behind the tag (`Verdict::next_tag` if it is not there) and then, at most, another free text with
// its own closing tag somewhere further on. If no such tag is found from one candidate on, none is
// found from a later one, because a later one only sees less of the text (`Verdict::give_up`). For
// the same reason the first opening tag that fits its own shape decides the search as a whole:
// where it fails for want of a closing tag, every later opening tag does.
#pragma once

#include "output/stage_one/scanner.hpp"
#include "output/stage_one/tags.hpp"

namespace dsettlement::output {

enum class Verdict : std::uint8_t { match, next_tag, give_up };

namespace detail {

// The end of a text that begins at `start`, if a line end separates it from the tag at `tag`.
template <typename Character>
const Character* text_end(const Character* start, const Character* tag) noexcept {
  if (tag <= start || !is_line_end(tag[-1])) return nullptr;
  const bool both = tag[-1] == '\n' && tag - start >= 2 && tag[-2] == '\r';
  return tag - (both ? 2 : 1);
}

}  // namespace detail

// Tries the opening tags in order. `rest(tag, behind)` looks at what follows one, where `behind` is
// a scanner behind the tag. True if it found a match.
template <typename Character, typename Rest>
bool match_first(const Section<Character>& section, Tag opening, Rest rest) {
  for (const TagMark& mark : section.tags()) {
    if (!mark.is(opening)) continue;
    const Character* const tag = section.place(mark);
    const Scanner<Character> behind(tag + section.length(mark), section.text().end);
    const Verdict verdict = rest(tag, behind);
    if (verdict != Verdict::next_tag) return verdict == Verdict::match;
  }
  return false;
}

// Tries the candidates for the end of a text in order. `rest(text, behind)` looks at what follows a
// closing tag, where `text` is the free text and `behind` a scanner behind the tag. The verdict is
// on the tag in front of the text: the next one may do if no line end follows it, and so no text.
template <typename Character, typename Rest>
Verdict match_lazily(const Section<Character>& section, const TextStarts<Character>& starts,
                     Tag closing, Rest rest) {
  if (starts.count == 0) return Verdict::next_tag;
  for (const Character* const start : starts) {
    Verdict verdict = Verdict::next_tag;
    for (const TagMark& mark : section.tags_from(start)) {
      if (!mark.is(closing)) continue;
      const Character* const tag = section.place(mark);
      const Character* const end = detail::text_end(start, tag);
      if (end == nullptr) continue;
      const Character* const behind = tag + section.length(mark);
      verdict = rest(Text<Character>{start, end}, Scanner<Character>(behind, section.text().end));
      if (verdict != Verdict::next_tag) break;
    }
    if (verdict == Verdict::match) return verdict;
  }
  return Verdict::give_up;
}

// The same where the closing tag is all that follows the text.
template <typename Character>
Verdict match_lazily(const Section<Character>& section, const TextStarts<Character>& starts,
                     Tag closing, Text<Character>& text) {
  return match_lazily(section, starts, closing,
                      [&](Text<Character> found, Scanner<Character> /*behind*/) {
                        text = found;
                        return Verdict::match;
                      });
}

}  // namespace dsettlement::output
