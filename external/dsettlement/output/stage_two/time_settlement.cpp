#include "output/stage_two/time_settlement.hpp"

namespace dsettlement::output {

using host::Mapping;
using host::Ref;

void add_load_columns(Mapping& mapping, host::Handle time, const std::vector<Ref>& columns) {
  if (columns.empty()) raise_missing_element();
  mapping.put(time, columns[0]);
  for (std::size_t i = 1; i < columns.size(); ++i) {
    mapping.put(Ref::steal(PyUnicode_FromFormat("load_%zu", i)), columns[i]);
  }
}

}  // namespace dsettlement::output
