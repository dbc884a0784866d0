#include "analysis/input_generation.hpp"

#include "host/containers.hpp"
#include "host/elements.hpp"

namespace dsettlement::analysis {

using host::Arguments;
using host::Handle;
using host::no_object;
using host::Parameter;
using host::Ref;

namespace {

constexpr long service_timeout = 60;

constexpr Parameter document_parameters[] = {host::self,
                                             {"metadata", "Metadata", no_object},
                                             {"dissipation_calculation", "_Vertical", no_object}};

Ref generate_input(State& state, Arguments arguments) {
  const auto [self, metadata, dissipation_calculation] =
      arguments.first<std::size(document_parameters)>();
  const State::Names& names = state.names;
  host::call_method(self, names.private_validate);
  const Ref identification =
      host::is_true(metadata) ? host::share(metadata) : host::call(state.metadata.now());
  return host::Mapping()
      .update(host::call_method(self, names.private_serialize))
      .update(host::call_method(identification, names.private_serialize))
      .put(names.dissipation_calculation, host::is_true(dissipation_calculation)
                                              ? host::get(dissipation_calculation, names.x)
                                              : host::none())
      .done();
}

constexpr Parameter file_parameters[] = {
    host::self,
    {"metadata", "Metadata", no_object},
    host::keyword_only("dissipation_calculation", "_Vertical", no_object),
    host::keyword_only("as_file", "bool", host::flag(false))};

// Shows with one exception what was noted on another. The two are what they are without it, so that
// nothing that goes wrong on the way counts.
void copy_notes(const State::Names& names, Handle from, Handle to) {
  try {
    for (const Ref& note : host::Elements(host::get(from, names.notes))) {
      host::call_method(to, names.add_note, note);
    }
  } catch (const host::ErrorSet&) {
    PyErr_Clear();
  }
}

// The text is the same for all reasons. Of two exceptions in a row many see the last alone, so the
// reasons that the service gave as notes stand with both.
[[noreturn]] void raise_not_generated(const State::Names& names, Handle failure) {
  try {
    host::raise_from(PyExc_Exception,
                     Ref::steal(PyUnicode_FromString(
                         "Input file could not be generated, please check your model")),
                     failure);
  } catch (const host::ErrorSet&) {
    Ref raised = host::take_error();
    copy_notes(names, failure, raised);
    host::raise_again(std::move(raised));
  }
}

// Only a failure that the service reports is put into other words; whatever else happens on the way
// reaches the caller as it is.
Ref post(State& state, Handle body) {
  const State::Names& names = state.names;
  const Ref post = state.toolkit.post.now();
  try {
    return host::call_with(post, {names.endpoint, body},
                           {{names.timeout, host::integer(service_timeout)}});
  } catch (const host::ErrorSet&) {
    Ref failure = host::take_error();
    if (!host::is_of_class(failure, state.toolkit.internal_error.now())) {
      host::raise_again(std::move(failure));
    }
    raise_not_generated(names, failure);
  }
}

Ref generate_input_file(State& state, Arguments arguments) {
  const auto [self, metadata, dissipation_calculation, as_file] =
      arguments.first<std::size(file_parameters)>();
  const State::Names& names = state.names;
  const Ref document =
      host::call_method(self, names.private_generate_input, metadata, dissipation_calculation);
  const Ref answer = post(state, host::Mapping().put(names.input, document).done());
  const Ref text = host::item(answer, names.input_file);
  if (host::is_true(as_file)) {
    return host::call_method(state.toolkit.file.now(), names.from_data, text);
  }
  const Ref make_stream = state.toolkit.bytes_io.now();
  return host::call(make_stream, host::call_method(text, names.encode));
}

}  // namespace

void add_input_generation(host::ClassBody& body, State& state) {
  body.add(state, host::method<generate_input>(
                      "_generate_input", document_parameters,
                      R"(Return the complete document of the model, as a new mapping.

metadata: identification block; one with all defaults if it is not given.
dissipation_calculation: vertical at which dissipation is calculated, or None.

Raises ModelError if the model is not fit to be calculated.)")
                      .returning("dict[str, Any]"));
  body.add(state, host::method<generate_input_file>(
                      "generate_input_file", file_parameters,
                      R"(Check the model and return its D-Settlement input file (.sli).

metadata: identification block of the file; one with all defaults if it is not given.
dissipation_calculation: vertical of the model at which a dissipation calculation is added,
    or None for no such calculation.
as_file: whether to return a File instead of a BytesIO.

Returns the content of the file in UTF-8, as a BytesIO at its start, or as a File. The model
stays as it is, and the same model gives the same file, unless the metadata asks for date or
time.

Raises ModelError if the model is not fit to be calculated; no request is made then. Raises
Exception, with the InternalError as its cause, if the template-filling service fails.)")
                      .returning("BytesIO | File"));
}

}  // namespace dsettlement::analysis
