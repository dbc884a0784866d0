#include "model/options.hpp"

#include <vector>

#include "host/name.hpp"
#include "host/object.hpp"

namespace dsettlement::model::options {

void hand_on(host::Handle frame_constructor, std::initializer_list<host::Handle> first_three,
             std::span<const Parameter> parameters, host::Arguments arguments) {
  std::vector<host::Name> names;
  std::vector<host::Keyword> keywords;
  names.reserve(parameters.size());
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    if (parameters[i].passing != host::Passing::by_keyword) continue;
    const host::Name& name = names.emplace_back(parameters[i].name);
    keywords.push_back({name, arguments[i]});
  }
  static_cast<void>(host::call_with(frame_constructor, first_three, keywords));
}

}  // namespace dsettlement::model::options
