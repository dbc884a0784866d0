// The module: its state, the order in which classes are made, and the public names.
#include <Python.h>

#include <initializer_list>
#include <memory>

#include "analysis/analysis_job.hpp"
#include "analysis/metadata.hpp"
#include "geometry/curve.hpp"
#include "geometry/curve_list.hpp"
#include "geometry/geometry_1d.hpp"
#include "geometry/layer.hpp"
#include "geometry/model_1d.hpp"
#include "geometry/model_2d.hpp"
#include "geometry/point.hpp"
#include "host/containers.hpp"
#include "model/enumerations.hpp"
#include "model/frame.hpp"
#include "model/vertical.hpp"
#include "output/parser.hpp"
#include "soil/drain_schedule.hpp"
#include "soil/load.hpp"
#include "soil/material.hpp"
#include "soil/non_uniform_load.hpp"
#include "soil/vertical_drain.hpp"

namespace dsettlement {

namespace {

struct State {
  explicit State(host::Handle object) : module(object) {}

  void define() {
    model::define_enumerations(module, model);
    model::define_vertical(module, model);
    soil::define_material(module, soil);
    soil::define_loads(module, soil);
    soil::define_non_uniform_load(module, soil);
    soil::define_drain_schedule(module, soil);
    soil::define_vertical_drain(module, soil);
    analysis::define_metadata(module, analysis);
    model::define_model(module, model, soil, analysis);
    geometry::define_geometry_1d(module, geometry);
    geometry::define_model_1d(module, geometry);
    geometry::define_point(module, geometry);
    geometry::define_curve(module, geometry);
    geometry::define_curve_lists(module, geometry);
    geometry::define_layer(module, geometry);
    geometry::define_model_2d(module, geometry, soil);
    analysis::define_analysis_job(module, analysis);
    output::define_parser(module, output);

    host::List names;
    for (const char* name : {"CalculationModel", "ConsolidationModel", "DSettlementAnalysis",
                             "DrainGrid", "DrainType", "DrainageSimpleMode", "Metadata", "Model1D",
                             "Model2D", "OutputFileParser", "VerticalDrain"}) {
      names.append(host::Name(name));
    }
    module.add(host::Name("__all__"), names.done());
    module.add(host::Name("__version__"), host::Name(DSETTLEMENT_VERSION));
  }

  host::Module module;
  Toolkit toolkit{module};
  model::State model{module, toolkit};
  soil::State soil{module, toolkit};
  analysis::State analysis{module, toolkit};
  geometry::State geometry{module, toolkit, model};
  output::State output{module, toolkit};
};

// What the interpreter keeps for the module: the state, once it is made.
State*& state_of(PyObject* module) {
  return *static_cast<State**>(PyModule_GetState(module));
}

// Tells somebody who has installed the module alone what it needs beside it.
void tell_of_toolkit() noexcept {
  if (PyErr_ExceptionMatches(PyExc_ModuleNotFoundError) == 0) return;
  host::Ref failure = host::take_error();
  try {
    const host::Ref missing = host::get(failure, host::Name("name"));
    if (host::is_true(host::call_method(missing, host::Name("startswith"), host::Name("sembra")))) {
      host::call_method(
          failure, host::Name("add_note"),
          host::Name("The module needs the toolkit sembra around it, or the local edition "
                     "in the folder toolkit of its sources: pip install ./toolkit"));
    }
  } catch (...) {
    host::translate_current_exception();
    PyErr_Clear();  // the error itself is the one to be told
  }
  PyErr_SetRaisedException(failure.release());
}

int execute(PyObject* module) {
  try {
    // The module owns the state before the first class is made, so that what has been made outlives
    // a failure on the way.
    state_of(module) = std::make_unique<State>(module).release();
    state_of(module)->define();
    return 0;
  } catch (...) {
    host::translate_current_exception();
    tell_of_toolkit();
    return -1;
  }
}

int traverse(PyObject* module, visitproc visit, void* argument) {
  const State* state = state_of(module);
  return state == nullptr ? 0 : state->module.traverse(visit, argument);
}

// There is no `clear`: the functions of the classes let go of the module instead, so that none ever
// runs on a state that is half gone.
void release(void* module) {
  delete state_of(static_cast<PyObject*>(module));
}

constexpr const char* documentation =
    R"(D-Settlement calculations: models in memory, input files, analyses and their results.

Build a Model1D or a Model2D, call its generate_input_file, hand the file to a
DSettlementAnalysis, execute it, and read the result file with an OutputFileParser.

Units throughout: metres for levels and coordinates, days for times, kN/m³ for unit weights,
kPa for pressures. Nothing is converted.)";

}  // namespace

}  // namespace dsettlement

PyMODINIT_FUNC PyInit_dsettlement() {
  static PyModuleDef_Slot slots[] = {
      {Py_mod_exec, reinterpret_cast<void*>(dsettlement::execute)},
      {Py_mod_multiple_interpreters, Py_MOD_PER_INTERPRETER_GIL_SUPPORTED},
      {0, nullptr}};
  static PyModuleDef definition = {.m_base = PyModuleDef_HEAD_INIT,
                                   .m_name = "dsettlement",
                                   .m_doc = dsettlement::documentation,
                                   .m_size = sizeof(dsettlement::State*),
                                   .m_methods = nullptr,
                                   .m_slots = slots,
                                   .m_traverse = dsettlement::traverse,
                                   .m_clear = nullptr,
                                   .m_free = dsettlement::release};
  return PyModuleDef_Init(&definition);
}
