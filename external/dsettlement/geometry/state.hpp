// What the concrete models work with.
#pragma once

#include "host/counted_fields.hpp"
#include "host/known_members.hpp"
#include "host/record_class.hpp"
#include "host/watched_field.hpp"
#include "model/state.hpp"
#include "toolkit.hpp"

namespace dsettlement::geometry {

[[nodiscard]] bool runs_assertions();

// A key for sorting, made by the standard operator of that name.
[[nodiscard]] host::Ref make_key(const char* operation, host::Handle name);

// The slot of a model in which its index stands.
inline constexpr const char* index_slot_name = "_dsettlement_index";

struct State {
  State(host::Module& module, const Toolkit& shared, const model::State& frame)
      : toolkit(shared), model(frame), has_assertions(runs_assertions()), module_(module) {
    field_type = host::make_watched_field_type(module_.object());
    by_x = make_key("attrgetter", names.x);
    by_area = make_key("methodcaller", names.area_above_horizontal);
  }

  const Toolkit& toolkit;
  const model::State& model;

  // Whether Python runs with assertions, or without as under `python -O`.
  const bool has_assertions;

  // Counts what may have changed points, curves, chains or verticals.
  [[nodiscard]] const host::Changes& changes() const noexcept { return module_.changes(); }
  [[nodiscard]] host::Changes& changes() noexcept { return module_.changes(); }

 private:
  host::Module& module_;

 public:
  host::Global geometry_1d{module_, "_Geometry1D"};
  host::Global model_1d{module_, "Model1D"};
  host::RecordClass point{module_, "_Point"};
  host::RecordClass curve{module_, "_Curve"};
  host::RecordClass curve_list{module_, "_CurveList"};
  host::RecordClass pl_line{module_, "_PlLine"};
  host::RecordClass boundary{module_, "_Boundary"};
  host::RecordClass layer{module_, "_Layer"};
  host::Global model_2d{module_, "Model2D"};

  // The curves of a chain; handing them out counts as a change.
  host::WatchedField chain_curves{module_, "_curves"};
  host::CountedFields fields_of_points{module_, {"_x", "_y"}};
  host::CountedFields fields_of_curves{module_, {"_p1", "_p2"}};
  host::CountedFields fields_of_chains{module_, {}};  // any can stand before an operation

  // What a model keeps its verticals and its boundaries sorted by.
  host::Slot by_x{module_};
  host::Slot by_area{module_};

  // The lists of a model that are indexed, and where its index stands.
  host::WatchedField boundaries{module_, "_boundaries"};
  host::WatchedField pl_lines{module_, "_pl_lines"};
  host::WatchedField verticals{module_, "_verticals"};
  host::Slot index_slot{module_};

  // What the fast path does without asking the class of the model for it.
  host::KnownMembers model_members{
      module_,
      {"_boundaries", "_pl_lines", "_verticals", "_points", "_layers", "_limits", "_curves",
       "_create_curves", "_create_curve", "__dict__", index_slot_name}};

  host::Slot field_type{module_};
  host::Slot box_type{module_};

  struct Names {
    host::Name init{"__init__"};
    host::Name get_state{"__getstate__"};
    host::Name private_serialize{"_serialize"};

    host::Name bottom_level{"bottom_level"};
    host::Name private_bottom_level{"_bottom_level"};
    host::Name top_level{"top_level"};
    host::Name layers{"layers"};
    host::Name private_layers{"_layers"};
    host::Name phreatic_level{"phreatic_level"};

    // Attributes of a model.
    host::Name private_geometry{"_geometry"};
    host::Name private_limits{"_limits"};
    host::Name private_materials{"_materials"};
    host::Name private_verticals{"_verticals"};
    host::Name undetermined{"Undetermined"};
    host::Name private_points{"_points"};
    host::Name private_pl_lines{"_pl_lines"};
    host::Name private_phreatic_line{"_phreatic_line"};
    host::Name private_boundaries{"_boundaries"};

    host::Name private_index_slot{index_slot_name};

    // Operations of a model.
    host::Name private_validate{"_validate"};
    host::Name create_point{"create_point"};
    host::Name private_create_curves{"_create_curves"};
    host::Name private_create_curve{"_create_curve"};
    host::Name private_create_boundary{"_create_boundary"};
    host::Name private_serialize_points{"_serialize_points"};
    host::Name private_serialize_curves{"_serialize_curves"};
    host::Name private_serialize_boundaries{"_serialize_boundaries"};
    host::Name private_serialize_pl_lines{"_serialize_pl_lines"};
    host::Name private_serialize_layers{"_serialize_layers"};

    // Points, curves and chains of curves.
    host::Name x{"x"};
    host::Name private_x{"_x"};
    host::Name y{"y"};
    host::Name private_y{"_y"};
    host::Name p1{"p1"};
    host::Name private_p1{"_p1"};
    host::Name p2{"p2"};
    host::Name private_p2{"_p2"};
    host::Name curves{"curves"};
    host::Name private_curves{"_curves"};
    host::Name points{"points"};
    host::Name area_above_horizontal{"area_above_horizontal"};

    // Layers.
    host::Name material{"material"};
    host::Name private_material{"_material"};
    host::Name boundary_top{"boundary_top"};
    host::Name private_boundary_top{"_boundary_top"};
    host::Name boundary_bottom{"boundary_bottom"};
    host::Name private_boundary_bottom{"_boundary_bottom"};
    host::Name pl_line_top{"pl_line_top"};
    host::Name private_pl_line_top{"_pl_line_top"};
    host::Name pl_line_bottom{"pl_line_bottom"};
    host::Name private_pl_line_bottom{"_pl_line_bottom"};

    // Lists.
    host::Name append{"append"};
    host::Name sort{"sort"};
    host::Name key{"key"};
    host::Name index{"index"};

    // Keys of the document.
    host::Name model_type{"model_type"};
    host::Name geometry_key{"geometry"};
    host::Name boundaries{"boundaries"};
    host::Name pl_lines{"pl_lines"};
    host::Name phreatic_line{"phreatic_line"};
    host::Name pl_top{"pl_top"};
    host::Name pl_bottom{"pl_bottom"};
  } names;
};

}  // namespace dsettlement::geometry
