// The soil vocabulary: every soil parameter beside the unit weights, with its declared type and its
// default, in the order of the keys in the document.
//
// Nothing here is interpreted: each number goes to the input file as the caller gave it. The codes
// (`..._type`, `dist_...`, the switches) are D-Settlement's own.
#pragma once

#include <array>

#include "host/parameter.hpp"

namespace dsettlement::soil {

struct SoilParameter {
  host::Parameter parameter;
  const char* key;  // in the document
};

// A parameter whose key is its name, unless another is given.
constexpr SoilParameter soil_parameter(const char* name, const char* type, host::Default value,
                                       const char* key = nullptr) {
  return {host::keyword_only(name, type, value), key == nullptr ? name : key};
}

inline constexpr auto vocabulary = [] {
  using host::number;
  return std::to_array<SoilParameter>({
      // Base values.
      soil_parameter("initial_void_ratio", "float", number(0.0)),
      soil_parameter("cohesion", "float", number(0.0)),
      soil_parameter("phi", "float", number(0.0)),
      soil_parameter("precon_isotache_type", "int", number(0)),
      soil_parameter("precon_koppejan_type", "int", number(0)),
      soil_parameter("use_equivalent_age", "int", number(0)),
      soil_parameter("equivalent_age", "float", number(0.0)),
      soil_parameter("pc", "float", number(0.0)),
      soil_parameter("ocr", "float", number(1.0)),
      soil_parameter("pop", "float", number(0.0), "pop_"),
      soil_parameter("limit_stress", "float", number(1.0)),
      soil_parameter("drained", "int", number(0)),
      soil_parameter("ap_as_approximation_by_cp_cs", "int", number(0)),
      soil_parameter("cv", "float", number(10.0)),
      soil_parameter("permeability_ver", "float", number(0.05)),
      soil_parameter("permeability_hor_factor", "float", number(1.0)),
      soil_parameter("storage_type", "int", number(0)),
      soil_parameter("permeability_strain_modulus", "float", number(1e15)),
      soil_parameter("use_prob_defaults", "int", number(1)),
      // Standard deviations.
      soil_parameter("std_gam_dry", "float", number(0.0)),
      soil_parameter("std_gam_wet", "float", number(0.0)),
      soil_parameter("std_cv", "float", number(0.0)),
      soil_parameter("std_pc", "float", number(0.0)),
      soil_parameter("std_pri_comp_index", "float", number(0.0)),
      soil_parameter("std_sec_comp_index", "float", number(0.0)),
      soil_parameter("std_sec_comp_rate", "float", number(0.0)),
      soil_parameter("std_ocr", "float", number(0.0)),
      soil_parameter("std_permeability_ver", "float", number(0.0)),
      soil_parameter("std_pop", "float", number(0.0)),
      soil_parameter("std_permeability_hor_factor", "float", number(0.0)),
      soil_parameter("std_initial_void_ratio", "float", number(0.0)),
      soil_parameter("std_permeability_strain_modulus", "float", number(0.0)),
      soil_parameter("std_limit_stress", "float", number(0.0)),
      soil_parameter("std_cp", "float", number(0.0)),
      soil_parameter("std_cp1", "float", number(0.0)),
      soil_parameter("std_cs", "float", number(0.0)),
      soil_parameter("std_cs1", "float", number(0.0)),
      soil_parameter("std_ap", "float", number(0.0)),
      soil_parameter("std_asec", "float", number(0.0)),
      soil_parameter("std_car", "float", number(0.0)),
      soil_parameter("std_ca", "float", number(0.0)),
      soil_parameter("std_r_ratio", "float", number(0.0)),
      soil_parameter("std_c_ratio", "float", number(0.0)),
      soil_parameter("std_s_ratio", "float", number(0.0)),
      soil_parameter("std_cr_index", "float", number(0.0)),
      soil_parameter("std_cc_index", "float", number(0.0)),
      soil_parameter("std_csw_index", "float", number(0.0)),
      // Distributions, in step with the standard deviations.
      soil_parameter("dist_gam_dry", "int", number(2)),
      soil_parameter("dist_gam_wet", "int", number(2)),
      soil_parameter("dist_cv", "int", number(2)),
      soil_parameter("dist_pc", "int", number(2)),
      soil_parameter("dist_pri_comp_index", "int", number(2)),
      soil_parameter("dist_sec_comp_index", "int", number(2)),
      soil_parameter("dist_sec_comp_rate", "int", number(2)),
      soil_parameter("dist_ocr", "int", number(2)),
      soil_parameter("dist_permeability_ver", "int", number(2)),
      soil_parameter("dist_pop", "int", number(2)),
      soil_parameter("dist_permeability_hor_factor", "int", number(2)),
      soil_parameter("dist_initial_void_ratio", "int", number(2)),
      soil_parameter("dist_permeability_strain_modulus", "int", number(2)),
      soil_parameter("dist_limit_stress", "int", number(2)),
      soil_parameter("dist_cp", "int", number(2)),
      soil_parameter("dist_cp1", "int", number(2)),
      soil_parameter("dist_cs", "int", number(2)),
      soil_parameter("dist_cs1", "int", number(2)),
      soil_parameter("dist_ap", "int", number(2)),
      soil_parameter("dist_asec", "int", number(2)),
      soil_parameter("dist_car", "int", number(2)),
      soil_parameter("dist_ca", "int", number(2)),
      soil_parameter("dist_r_ratio", "int", number(2)),
      soil_parameter("dist_c_ratio", "int", number(2)),
      soil_parameter("dist_s_ratio", "int", number(2)),
      soil_parameter("dist_cr_index", "int", number(2)),
      soil_parameter("dist_cc_index", "int", number(2)),
      soil_parameter("dist_csw_index", "int", number(2)),
      // Correlations.
      soil_parameter("cor_cp_cp1", "float", number(0.0)),
      soil_parameter("cor_cs_cp1", "float", number(0.0)),
      soil_parameter("cor_cs1_cp1", "float", number(0.0)),
      soil_parameter("cor_ap_cp1", "float", number(0.0)),
      soil_parameter("cor_asec_cp1", "float", number(0.0)),
      soil_parameter("cor_cr_index_cc_index", "float", number(0.0)),
      soil_parameter("cor_r_ratio_c_ratio", "float", number(0.0)),
      soil_parameter("cor_ca_cc_index_or_c_ratio", "float", number(0.0)),
      soil_parameter("cor_pri_comp_index_sec_comp_index", "float", number(0.0)),
      soil_parameter("cor_sec_comp_rate_sec_comp_index", "float", number(0.0)),
      // Compression.
      soil_parameter("cp", "float", number(1.0)),
      soil_parameter("cp1", "float", number(1.0)),
      soil_parameter("cs", "float", number(1.0)),
      soil_parameter("cs1", "float", number(1.0)),
      soil_parameter("ap", "float", number(1.0)),
      soil_parameter("asec", "float", number(1.0)),
      soil_parameter("car", "float", number(0.0)),
      soil_parameter("ca", "float", number(1.0)),
      soil_parameter("comp_ratio", "int", number(1)),
      soil_parameter("r_ratio", "float", number(1.0)),
      soil_parameter("c_ratio", "float", number(1.0)),
      soil_parameter("s_ratio", "float", number(0.0)),
      soil_parameter("cr_index", "float", number(1.0)),
      soil_parameter("cc_index", "float", number(1.0)),
      soil_parameter("csw_index", "float", number(0.0)),
      soil_parameter("pri_comp_index", "float", number(0.01)),
      soil_parameter("sec_comp_index", "float", number(0.1)),
      soil_parameter("sec_comp_rate", "float", number(0.005)),
      // Horizontal behaviour.
      soil_parameter("horizontal_behaviour_type", "int", number(2)),
      soil_parameter("elasticity", "float", number(1000.0)),
      soil_parameter("default_elasticity", "int", number(1)),
  });
}();

static_assert(vocabulary.size() == 106);

}  // namespace dsettlement::soil
