#include "analysis/metadata.hpp"

#include "host/class_body.hpp"
#include "host/filled.hpp"
#include "host/sequence.hpp"
#include "host/text.hpp"

namespace dsettlement::analysis {

using host::Arguments;
using host::characters;
using host::flag;
using host::Handle;
using host::Parameter;
using host::Ref;

namespace {

constexpr Py_ssize_t longest_title = 50;

constexpr Parameter init_parameters[] = {host::self,
                                         {"file_name", "str", characters("-")},
                                         {"company", "str", characters("-")},
                                         {"created_by", "str", characters("-")},
                                         {"title_1", "str", characters("-")},
                                         {"title_2", "str", characters("-")},
                                         {"title_3", "str", characters("-")},
                                         {"write_date", "bool", flag(false)},
                                         {"write_time", "bool", flag(false)}};

void check_title(State& state, Handle title) {
  const Py_ssize_t length = host::length(title);
  if (length > longest_title) {
    state.toolkit.refuse("Max amount of character of identification title is {}: {} present.",
                         {host::integer(longest_title), host::integer(length)});
  }
}

Ref init(State& state, Arguments arguments) {
  const auto [self, file_name, company, created_by, title_1, title_2, title_3, write_date,
              write_time] = arguments.first<std::size(init_parameters)>();
  const State::Names& names = state.names;
  for (const Handle title : {title_1, title_2, title_3}) check_title(state, title);
  host::set(self, names.private_file_name, file_name);
  host::set(self, names.private_company, company);
  host::set(self, names.private_created_by, created_by);
  host::set(self, names.private_title_1, title_1);
  host::set(self, names.private_title_2, title_2);
  host::set(self, names.private_title_3, title_3);
  host::set(self, names.private_write_date, write_date);
  host::set(self, names.private_write_time, write_time);
  return host::none();
}

// The part of `now` that the format names, or a dummy that makes two generations alike.
Ref moment(State& state, Handle wanted, Handle now, const char* format, const char* dummy) {
  if (!host::is_true(wanted)) return Ref::steal(PyUnicode_FromString(dummy));
  return host::call_method(now, state.names.strftime, Ref::steal(PyUnicode_FromString(format)));
}

Ref serialize(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  // Date and time come from one reading of the clock.
  const Ref now = host::call_method(state.toolkit.datetime.now(), names.now);
  return host::Mapping()
      .put(names.date,
           moment(state, host::get(self, names.private_write_date), now, "%d/%m/%Y", "01/01/1900"))
      .put(names.time,
           moment(state, host::get(self, names.private_write_time), now, "%H:%M:%S", "00:00:00"))
      .put(names.file_name, host::get(self, names.private_file_name))
      .put(names.company, host::get(self, names.private_company))
      .put(names.created_by, host::get(self, names.private_created_by))
      .put(names.title_1, host::get(self, names.private_title_1))
      .put(names.title_2, host::get(self, names.private_title_2))
      .put(names.title_3, host::get(self, names.private_title_3))
      .done();
}

constexpr auto fields =
    host::filled(R"(file_name: name of the input file as the file itself tells it.
company: company that the calculation is made for.
created_by: who or what made the file.
title_1, title_2, title_3: titles of the calculation, at most {} characters each.
write_date: whether the date of generation is written; else 01/01/1900.
write_time: whether the time of generation is written; else 00:00:00.

Raises ModelError for the first title that is too long.)",
                 longest_title);

}  // namespace

void define_metadata(host::Module& module, State& state) {
  host::ClassBody body(module, "Metadata",
                       R"(The identification block of an input file.

Doesn't change after construction and serves any number of generations.)");
  body.add(state, host::method<init>("__init__", init_parameters, fields));
  body.add(state, host::method<serialize>(
                      "_serialize",
                      R"(Return the identification block as a new mapping of str to str.

Date and time are those of this call.)")
                      .returning("dict[str, str]"));
  state.metadata = body.make();
}

}  // namespace dsettlement::analysis
