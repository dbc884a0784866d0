#include "output/parser.hpp"

#include "host/text.hpp"
#include "output/results.hpp"
#include "output/verticals.hpp"

namespace dsettlement::output {

using host::Arguments;
using host::Handle;
using host::Parameter;
using host::Ref;

namespace {

constexpr Parameter init_parameters[] = {host::self, {"sld_file", "StringIO"}};
constexpr Parameter file_parameters[] = {host::cls, {"sld_file", "str"}};
constexpr Parameter results_parameters[] = {host::cls, {"results", "str"}};
constexpr Parameter vertical_parameters[] = {host::cls, {"vertical", "str"}};

Ref init(State& state, Arguments arguments) {
  const auto [self, sld_file] = arguments.first<std::size(init_parameters)>();
  const State::Names& names = state.names;
  const Ref parse = host::get(self, names.private_parse_results);
  host::set(self, names.private_results,
            host::call(parse, host::call_method(sld_file, names.getvalue)));
  return host::none();
}

Ref raw_results(State& state, Arguments arguments) {
  return host::get(arguments[0], state.names.private_results);
}

Ref vertical_results(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const Ref parse = host::get(self, state.names.private_parse_verticals);
  return host::call(parse, host::get(self, state.names.private_results));
}

Ref residual_times(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const Ref parse = host::get(self, state.names.private_parse_residual_settlements);
  return host::call(parse, host::get(self, state.names.private_results));
}

// The last piece of the path in the file, or a word for a file that doesn't tell it.
Ref name_of_file(const State& state, Handle cls, Handle file) {
  const Ref path = find_path_text(state, cls, file);
  if (!path) return Ref::steal(PyUnicode_FromString("sld-file"));
  return host::item(host::call_method(path, state.names.split, state.names.backslash),
                    host::integer(-1));
}

Ref parse_results(State& state, Arguments arguments) {
  const auto [cls, file] = arguments.first<std::size(file_parameters)>();
  Ref results = find_results_text(state, cls, file);
  if (results) return results;
  host::raise(state.toolkit.parsing_error.original(),
              host::text("{} contains no [Results]", {name_of_file(state, cls, file)}));
}

Ref parse_verticals(State& state, Arguments arguments) {
  const auto [cls, results] = arguments.first<std::size(results_parameters)>();
  return read_verticals(state, cls, results);
}

Ref parse_vertical(State& state, Arguments arguments) {
  const auto [cls, vertical] = arguments.first<std::size(vertical_parameters)>();
  return read_vertical(state, cls, vertical);
}

Ref parse_residual_settlements(State& state, Arguments arguments) {
  const auto [cls, results] = arguments.first<std::size(results_parameters)>();
  return read_residual_settlements(state, cls, results);
}

}  // namespace

void define_parser(host::Module& module, State& state) {
  host::ClassBody body(module, "OutputFileParser",
                       R"(Helper class to extract results from a D-Settlement output file (.sld).

Construct it with the text of a finished analysis, then read the results:

    parser = OutputFileParser(sld_file)
    parser.vertical_results
    parser.residual_times

Nothing is kept between reads: each parses the text afresh and returns new objects.)");
  body.declare("_results", "str");
  state.patterns.define(body);
  body.add(state, host::method<init>("__init__", init_parameters,
                                     R"(Cut the [Results] block out of the file.

sld_file: the output of the analysis; any object whose `getvalue` gives the text will do.

Raises ParsingError if the text has no [Results] block.)"));
  body.add(
      state,
      host::property<raw_results>(
          "raw_results",
          R"(Raw result data. For convenience, specific data can also be extracted using available methods.)")
          .returning("str"));
  body.add(state, host::property<vertical_results>("vertical_results",
                                                   R"(Returns results for all verticals.

A mapping of the vertical's number, from 1, to a mapping with the keys

coordinates: `x` and `z` [m], as far as the file has them;
depths, leakages, drained_layers: one number per line of the file; depths in m;
stresses: header to list of numbers [kPa]; empty for files that D-Settlement itself wrote, in
    which a blank follows "Depth step count";
time_settlement_per_load: `load_step_count`, `time_step_count`, `time` [days], and `load_1` and
    onwards;
vertical_data: time [days] to a mapping of header to list of numbers.

Headers are the lines of the file to the letter. A block that is absent or incomplete gives an
empty container.

Raises ValueError for a field that is no number, and IndexError for a row with too few fields.)")
                      .returning("dict[int, dict[str, Any]]"));
  body.add(state, host::property<residual_times>("residual_times",
                                                 R"(Returns the residual times.

A mapping of the vertical's number in the file to a mapping of header, such as `Time` and
`Settlement`, to a list with one number per row. It is empty if the file has no such block, or one
without rows, as without calculation times.

Raises ValueError for a field that is no number, and IndexError for a row with too few fields. In
some files of D-Settlement the first such block has no rows and runs on to the end of a second one:
that raises ValueError too.)")
                      .returning("dict[int, dict[str, list[float]]]"));
  body.add(state,
           host::class_method<parse_results>("_parse_results", file_parameters,
                                             R"(Return the [Results] block of a text, tags included.

Raises ParsingError if there is none.)")
               .returning("str"));
  body.add(state, host::class_method<parse_verticals>(
                      "_parse_verticals", results_parameters,
                      "Return the results of all [Vertical] blocks, by number from 1.")
                      .returning("dict[int, dict[str, Any]]"));
  body.add(state, host::class_method<parse_vertical>(
                      "_parse_vertical", vertical_parameters,
                      "Return the results of one [Vertical] block, given with its tags.")
                      .returning("dict[str, Any]"));
  body.add(state,
           host::class_method<parse_residual_settlements>(
               "_parse_residual_settlements", results_parameters,
               "Return the residual settlements: vertical, then header, to a list of numbers.")
               .returning("dict[int, dict[str, list[float]]]"));
  state.parser = body.make();
  state.parse_vertical = host::get(
      host::get(state.parser.original(), state.names.private_parse_vertical), state.names.function);
}

}  // namespace dsettlement::output
