#include "output/patterns.hpp"

#include <utility>

namespace dsettlement::output {

using host::Handle;
using host::Ref;

namespace {

// One element per definition, in their order.
template <typename Element, typename Make>
std::array<Element, pattern_count> for_each_definition(Make make) {
  return [&]<std::size_t... i>(std::index_sequence<i...>) {
    return std::array<Element, pattern_count>{make(pattern_definitions[i])...};
  }(std::make_index_sequence<pattern_count>{});
}

}  // namespace

Patterns::Patterns(host::Module& module)
    : names_(for_each_definition<host::Name>(
          [](const PatternDefinition& definition) { return host::Name(definition.name); })),
      compiled_(for_each_definition<host::Slot>(
          [&](const PatternDefinition&) { return host::Slot(module); })) {}

void Patterns::define(host::ClassBody& body) {
  const Ref compile = host::import("re", "compile");
  const Ref dot_matches_all = host::import("re", "DOTALL");
  const host::Name flags("flags");
  for (std::size_t i = 0; i < pattern_count; ++i) {
    const Ref text = Ref::steal(PyUnicode_FromString(pattern_definitions[i].text));
    Ref pattern = pattern_definitions[i].dot_matches_all
                      ? host::call_with(compile, {text}, {{flags, dot_matches_all}})
                      : host::call(compile, text);
    body.add(pattern_definitions[i].name, pattern);
    compiled_[i] = std::move(pattern);
  }
}

Ref Patterns::to_run(Handle cls, Pattern pattern, bool is_readable) const {
  const auto index = static_cast<std::size_t>(pattern);
  const Ref found = host::get(cls, names_[index]);
  return is_readable && found.get() == compiled_[index].get() ? Ref() : found;
}

}  // namespace dsettlement::output
