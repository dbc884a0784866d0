#include "output/verticals.hpp"

#include "output/vertical_reader.hpp"

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

Ref read_vertical(const State& state, Handle cls, Handle vertical) {
  if (!is_readable(vertical)) return VerticalReader<Narrow>(state, cls, vertical).read();
  return with_text_of(vertical, [&]<typename Character>(Text<Character> text) {
    const std::vector<TagMark> tags = index_tags(text);
    const Section<Character> section(text, tags);
    return VerticalReader<Character>(state, cls, vertical, &section).read();
  });
}

Ref read_verticals(const State& state, Handle cls, Handle results) {
  if (const Ref pattern = state.patterns.to_run(cls, Pattern::vertical, is_readable(results))) {
    return match_verticals(state, cls, pattern, results);
  }
  return with_text_of(results, [&]<typename Character>(Text<Character> text) {
    return for_each_vertical(text, [&](const Section<Character>& vertical) {
      const Ref parse = host::get(cls, state.names.private_parse_vertical);
      if (is_original(state, cls, parse)) {
        return VerticalReader<Character>(state, cls, results, &vertical).read();
      }
      return host::call(parse, python_text(results, vertical.text()));
    });
  });
}

}  // namespace dsettlement::output
