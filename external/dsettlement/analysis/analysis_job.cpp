#include "analysis/analysis_job.hpp"

#include "host/class_body.hpp"
#include "host/unpack.hpp"

namespace dsettlement::analysis {

using host::Arguments;
using host::Handle;
using host::Parameter;
using host::Ref;

namespace {

constexpr long tool_version = 1;

constexpr Parameter init_parameters[] = {host::self, {"input_file", "BytesIO | File"}};

Ref init(State& state, Arguments arguments) {
  const auto [self, input_file] = arguments.first<std::size(init_parameters)>();
  const State::Names& names = state.names;
  host::set(self, names.input_file, input_file);
  static_cast<void>(host::call_with(host::super(state.analysis.original(), self, names.init),
                                    {names.tool}, {{names.version, host::integer(tool_version)}}));
  return host::none();
}

constexpr Parameter message_parameters[] = {host::self, {"message", "str"}};

Ref handle_execution_error(State& state, Arguments arguments) {
  const auto [self, message] = arguments.first<std::size(message_parameters)>();
  const Ref unknown = Ref::steal(Py_BuildValue("(sO)", "", Py_None));
  const Ref known =
      host::call_method(state.toolkit.exception_map.now(), state.names.get, message, unknown);
  const auto [text, type] = host::unpack<2>(known);
  if (type.get() != Py_None) host::raise_made(host::call(type, text));
  return host::none();
}

Ref generate_job_content(State& state, Arguments arguments) {
  const State::Names& names = state.names;
  const Ref input_file = host::get(arguments[0], names.input_file);
  // The whole buffer counts, wherever a stream has been read to.
  const Ref bytes = host::is_instance(input_file, state.toolkit.bytes_io.now())
                        ? host::call_method(input_file, names.getvalue)
                        : host::call_method(input_file, names.getvalue_binary);
  const Ref encoded = host::call(state.toolkit.b64encode.now(), bytes);
  const Ref body = host::call_method(encoded, names.decode, names.utf_8);
  return host::call_with(state.toolkit.job_content.now(), {}, {{names.body, body}});
}

constexpr Parameter output_parameters[] = {
    host::self,
    {"extension", "str", host::characters(".sld")},
    host::keyword_only("as_file", "bool", host::flag(false))};

Ref get_output_file(State& state, Arguments arguments) {
  const auto [self, extension, as_file] = arguments.first<std::size(output_parameters)>();
  const State::Names& names = state.names;
  const Ref result = host::call_method(self, names.private_get_result_content);
  Ref file = host::call(state.toolkit.file_body.now(), result, extension);
  if (!host::is_true(as_file)) return file;
  if (!host::is_true(file)) return host::none();
  return host::call_method(state.toolkit.file.now(), names.from_data,
                           host::call_method(file, names.getvalue));
}

constexpr Parameter sld_parameters[] = {host::self,
                                        host::keyword_only("as_file", "bool", host::flag(false))};

Ref get_sld_file(State& state, Arguments arguments) {
  const auto [self, as_file] = arguments.first<std::size(sld_parameters)>();
  const State::Names& names = state.names;
  Ref file = host::call_with(host::get(self, names.get_output_file), {},
                             {{names.extension, names.sld}, {names.as_file, as_file}});
  if (!host::is_true(file)) host::raise(PyExc_ValueError, "sld file could not be obtained.");
  if (host::is_true(as_file)) return file;
  const Ref make_stream = state.toolkit.string_io.now();
  const Ref bytes = host::call_method(file, names.getvalue);
  return host::call(make_stream, host::call_method(bytes, names.decode));
}

}  // namespace

void define_analysis_job(host::Module& module, State& state) {
  host::ClassBody body(module, "DSettlementAnalysis",
                       R"(One D-Settlement calculation on a worker.

    analysis = DSettlementAnalysis(model.generate_input_file())
    analysis.execute(timeout=60)
    parser = OutputFileParser(analysis.get_sld_file()))");
  body.declare("input_file", "BytesIO | File");
  body.add(state, host::method<init>("__init__", init_parameters,
                                     R"(Keep the input file, which is read when the job starts.

input_file: content of an input file (.sli), as a BytesIO or a File.)"));
  body.add(state, host::method<handle_execution_error>(
                      "_handle_execution_error", message_parameters,
                      R"(Raise the exception that stands for a known error message of the worker.

message: what the worker reported; an unknown one is left to the caller.)"));
  body.add(state,
           host::method<generate_job_content>(
               "_generate_job_content", "Return the job for the worker: the input file in base64.")
               .returning("_JobContent"));
  body.add(state,
           host::method<get_output_file>("get_output_file", output_parameters,
                                         R"(Return an output file of the finished calculation.

extension: one of ".sld", ".slo", ".error.log" and ".err".
as_file: whether to return a File instead of a BytesIO.

Returns the content as a BytesIO or a File, or None if there is no such output.)")
               .returning("BytesIO | File | None"));
  body.add(state,
           host::method<get_sld_file>("get_sld_file", sld_parameters,
                                      R"(Return the result file (.sld) of the finished calculation.

as_file: whether to return a File instead of a StringIO.

Returns the text as a StringIO at its start, for OutputFileParser, or a File.

Raises ValueError if there is no such output, UnicodeDecodeError if it is not UTF-8.)")
               .returning("StringIO | File"));
  state.analysis = body.make({state.toolkit.external_program.original()});
}

}  // namespace dsettlement::analysis
