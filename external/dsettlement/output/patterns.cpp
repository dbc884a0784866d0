#include "output/patterns.hpp"

#include <utility>

namespace dsettlement::output {

using host::Handle;
using host::Ref;

namespace {

struct Definition {
  const char* name;
  const char* text;
  bool dot_matches_all = true;
};

#define LINE_END R"((?:\r\n|\n|\r))"

constexpr std::array<Definition, Patterns::count> definitions = {{
    {"_FILE_NAME_PATTERN", R"(FILENAME\s+: (?P<path>.*))" LINE_END, false},
    {"_RESULTS_PATTERN",
     R"(\[Results\])" LINE_END R"((?P<results>.*?))" LINE_END R"(\[End of Results\])"},
    {"_VERTICAL_PATTERN",
     R"(\[Vertical\])" LINE_END R"((?P<results>.*?))" LINE_END R"(\[End of Vertical\])"},
    {"_COORDINATE_PATTERN", R"((?P<coordinate>.*?)\s+=\s+ (?P<axes>[X|Z])\sco-ordinate)", false},
    {"_TIME_SETTLEMENT_PER_LOAD_PATTERN",
     R"(\[Time-Settlement per Load\])" LINE_END
     R"(\s*(?P<time_step_count>\d+)\s+=\s+Time\sstep\scount\s*)" LINE_END
     R"(\s*(?P<load_step_count>\d+)\s+=\s+Load\sstep\scount\s*)" LINE_END
     R"((?P<data>.*?))" LINE_END R"(\[End of Time-Settlement per Load\])"},
    {"_DEPTHS_PATTERN",
     R"(\[Depths\])" LINE_END R"((?P<data>.*?))" LINE_END R"(\[End of Depths\])" LINE_END},
    {"_LEAKAGES_PATTERN",
     R"(\[Leakages\])" LINE_END R"((?P<data>.*?))" LINE_END R"(\[End of Leakages\])" LINE_END},
    {"_DRAINED_LAYERS_PATTERN", R"(\[Drained Layers\])" LINE_END R"((?P<data>.*?))" LINE_END
                                R"(\[End of Drained Layers\])" LINE_END},
    {"_STRESSES_PATTERN",
     R"(\[Stresses\])" LINE_END R"(\[Column Indication\])" LINE_END R"((?P<headers>.*?))" LINE_END
     R"(\[End of Column Indication\])" LINE_END R"(\[Stress Data\])" LINE_END
     R"(\s*[0-9]+\s+=\s+Depth step count)" LINE_END R"((?P<data>.*?))" LINE_END
     R"(\[End of Stress Data\])" LINE_END R"(\[End of Stresses\])"},
    {"_TIME_DEPENDENT_DATA_PATTERN",
     R"(\[Time-dependent Data\])" LINE_END R"(\[Column Indication\])" LINE_END
     R"((?P<headers>.*?))" LINE_END R"(\[End of Column Indication\])" LINE_END
     R"((?P<data>.*?))" LINE_END R"(\[End of Time dependent Data\])"},
    {"_VERTICAL_DATA_AT_TIME", R"(\[Vertical Data at Time\])" LINE_END
                               R"(\s*(?P<time>\d+\.\d+)\s+=\s+Time\sin\sdays)" LINE_END
                               R"((?P<data>.*?))" LINE_END R"(\[End of Vertical Data at Time\])"},
    {"_RESIDUAL_SETTLEMENTS_PATTERN",
     R"(\[RESIDUAL SETTLEMENTS\])" LINE_END R"(\[Column Indication\])" LINE_END
     R"((?P<headers>.*?))" LINE_END R"(\[End of Column Indication\])" LINE_END
     R"(\[DATA COUNT\])" LINE_END R"(.*?)" LINE_END R"(\[END OF DATA COUNT\])" LINE_END
     R"(\[RESIDUAL SETTLEMENT DATA\])" LINE_END R"((?P<data>.*?))" LINE_END
     R"(\[END OF RESIDUAL SETTLEMENT DATA\])"},
}};

#undef LINE_END

// One element per definition, in their order.
template <typename Element, typename Make>
std::array<Element, Patterns::count> for_each_definition(Make make) {
  return [&]<std::size_t... i>(std::index_sequence<i...>) {
    return std::array<Element, Patterns::count>{make(definitions[i])...};
  }(std::make_index_sequence<Patterns::count>{});
}

}  // namespace

Patterns::Patterns(host::Module& module)
    : names_(for_each_definition<host::Name>(
          [](const Definition& definition) { return host::Name(definition.name); })),
      compiled_(
          for_each_definition<host::Slot>([&](const Definition&) { return host::Slot(module); })) {}

void Patterns::define(host::ClassBody& body) {
  const Ref compile = host::import("re", "compile");
  const Ref dot_matches_all = host::import("re", "DOTALL");
  const host::Name flags("flags");
  for (std::size_t i = 0; i < count; ++i) {
    const Ref text = Ref::steal(PyUnicode_FromString(definitions[i].text));
    Ref pattern = definitions[i].dot_matches_all
                      ? host::call_with(compile, {text}, {{flags, dot_matches_all}})
                      : host::call(compile, text);
    body.add(definitions[i].name, pattern);
    compiled_[i] = std::move(pattern);
  }
}

Ref Patterns::of(Handle cls, Pattern pattern) const {
  return host::get(cls, names_[static_cast<std::size_t>(pattern)]);
}

bool Patterns::is_original(Handle cls, Pattern pattern) const {
  try {
    return of(cls, pattern).get() == compiled_[static_cast<std::size_t>(pattern)].get();
  } catch (const host::ErrorSet&) {
    PyErr_Clear();  // It fails again, and then for good, where the pattern is needed.
    return false;
  }
}

bool Patterns::are_original_for_vertical(Handle cls) const {
  for (const Pattern pattern :
       {Pattern::coordinate, Pattern::time_settlement_per_load, Pattern::depths, Pattern::leakages,
        Pattern::drained_layers, Pattern::stresses, Pattern::time_dependent_data,
        Pattern::vertical_data_at_time}) {
    if (!is_original(cls, pattern)) return false;
  }
  return true;
}

}  // namespace dsettlement::output
