// The soil vocabulary: every soil parameter beside the unit weights, with its declared type and its
// default, in the order of the keys in the document.
//
// Nothing here is interpreted: each number goes to the input file as the caller gave it. The codes
// (`..._type`, `dist_...`, the switches) are D-Settlement's own.
#pragma once

#include <array>

#include "host/parameter.hpp"

namespace dsettlement::soil {

inline constexpr auto vocabulary = [] {
  using host::keyword_only;
  using host::number;
  return std::to_array<host::Parameter>({
      // Base values.
      keyword_only("initial_void_ratio", "float", number(0.0)),
      keyword_only("cohesion", "float", number(0.0)),
      keyword_only("phi", "float", number(0.0)),
      keyword_only("precon_isotache_type", "int", number(0)),
      keyword_only("precon_koppejan_type", "int", number(0)),
      keyword_only("use_equivalent_age", "int", number(0)),
      keyword_only("equivalent_age", "float", number(0.0)),
      keyword_only("pc", "float", number(0.0)),
      keyword_only("ocr", "float", number(1.0)),
      keyword_only("pop", "float", number(0.0)),
      keyword_only("limit_stress", "float", number(1.0)),
      keyword_only("drained", "int", number(0)),
      keyword_only("ap_as_approximation_by_cp_cs", "int", number(0)),
      keyword_only("cv", "float", number(10.0)),
      keyword_only("permeability_ver", "float", number(0.05)),
      keyword_only("permeability_hor_factor", "float", number(1.0)),
      keyword_only("storage_type", "int", number(0)),
      keyword_only("permeability_strain_modulus", "float", number(1e15)),
      keyword_only("use_prob_defaults", "int", number(1)),
      // Standard deviations.
      keyword_only("std_gam_dry", "float", number(0.0)),
      keyword_only("std_gam_wet", "float", number(0.0)),
      keyword_only("std_cv", "float", number(0.0)),
      keyword_only("std_pc", "float", number(0.0)),
      keyword_only("std_pri_comp_index", "float", number(0.0)),
      keyword_only("std_sec_comp_index", "float", number(0.0)),
      keyword_only("std_sec_comp_rate", "float", number(0.0)),
      keyword_only("std_ocr", "float", number(0.0)),
      keyword_only("std_permeability_ver", "float", number(0.0)),
      keyword_only("std_pop", "float", number(0.0)),
      keyword_only("std_permeability_hor_factor", "float", number(0.0)),
      keyword_only("std_initial_void_ratio", "float", number(0.0)),
      keyword_only("std_permeability_strain_modulus", "float", number(0.0)),
      keyword_only("std_limit_stress", "float", number(0.0)),
      keyword_only("std_cp", "float", number(0.0)),
      keyword_only("std_cp1", "float", number(0.0)),
      keyword_only("std_cs", "float", number(0.0)),
      keyword_only("std_cs1", "float", number(0.0)),
      keyword_only("std_ap", "float", number(0.0)),
      keyword_only("std_asec", "float", number(0.0)),
      keyword_only("std_car", "float", number(0.0)),
      keyword_only("std_ca", "float", number(0.0)),
      keyword_only("std_r_ratio", "float", number(0.0)),
      keyword_only("std_c_ratio", "float", number(0.0)),
      keyword_only("std_s_ratio", "float", number(0.0)),
      keyword_only("std_cr_index", "float", number(0.0)),
      keyword_only("std_cc_index", "float", number(0.0)),
      keyword_only("std_csw_index", "float", number(0.0)),
      // Distributions, in step with the standard deviations.
      keyword_only("dist_gam_dry", "int", number(2)),
      keyword_only("dist_gam_wet", "int", number(2)),
      keyword_only("dist_cv", "int", number(2)),
      keyword_only("dist_pc", "int", number(2)),
      keyword_only("dist_pri_comp_index", "int", number(2)),
      keyword_only("dist_sec_comp_index", "int", number(2)),
      keyword_only("dist_sec_comp_rate", "int", number(2)),
      keyword_only("dist_ocr", "int", number(2)),
      keyword_only("dist_permeability_ver", "int", number(2)),
      keyword_only("dist_pop", "int", number(2)),
      keyword_only("dist_permeability_hor_factor", "int", number(2)),
      keyword_only("dist_initial_void_ratio", "int", number(2)),
      keyword_only("dist_permeability_strain_modulus", "int", number(2)),
      keyword_only("dist_limit_stress", "int", number(2)),
      keyword_only("dist_cp", "int", number(2)),
      keyword_only("dist_cp1", "int", number(2)),
      keyword_only("dist_cs", "int", number(2)),
      keyword_only("dist_cs1", "int", number(2)),
      keyword_only("dist_ap", "int", number(2)),
      keyword_only("dist_asec", "int", number(2)),
      keyword_only("dist_car", "int", number(2)),
      keyword_only("dist_ca", "int", number(2)),
      keyword_only("dist_r_ratio", "int", number(2)),
      keyword_only("dist_c_ratio", "int", number(2)),
      keyword_only("dist_s_ratio", "int", number(2)),
      keyword_only("dist_cr_index", "int", number(2)),
      keyword_only("dist_cc_index", "int", number(2)),
      keyword_only("dist_csw_index", "int", number(2)),
      // Correlations.
      keyword_only("cor_cp_cp1", "float", number(0.0)),
      keyword_only("cor_cs_cp1", "float", number(0.0)),
      keyword_only("cor_cs1_cp1", "float", number(0.0)),
      keyword_only("cor_ap_cp1", "float", number(0.0)),
      keyword_only("cor_asec_cp1", "float", number(0.0)),
      keyword_only("cor_cr_index_cc_index", "float", number(0.0)),
      keyword_only("cor_r_ratio_c_ratio", "float", number(0.0)),
      keyword_only("cor_ca_cc_index_or_c_ratio", "float", number(0.0)),
      keyword_only("cor_pri_comp_index_sec_comp_index", "float", number(0.0)),
      keyword_only("cor_sec_comp_rate_sec_comp_index", "float", number(0.0)),
      // Compression.
      keyword_only("cp", "float", number(1.0)),
      keyword_only("cp1", "float", number(1.0)),
      keyword_only("cs", "float", number(1.0)),
      keyword_only("cs1", "float", number(1.0)),
      keyword_only("ap", "float", number(1.0)),
      keyword_only("asec", "float", number(1.0)),
      keyword_only("car", "float", number(0.0)),
      keyword_only("ca", "float", number(1.0)),
      keyword_only("comp_ratio", "int", number(1)),
      keyword_only("r_ratio", "float", number(1.0)),
      keyword_only("c_ratio", "float", number(1.0)),
      keyword_only("s_ratio", "float", number(0.0)),
      keyword_only("cr_index", "float", number(1.0)),
      keyword_only("cc_index", "float", number(1.0)),
      keyword_only("csw_index", "float", number(0.0)),
      keyword_only("pri_comp_index", "float", number(0.01)),
      keyword_only("sec_comp_index", "float", number(0.1)),
      keyword_only("sec_comp_rate", "float", number(0.005)),
      // Horizontal behaviour.
      keyword_only("horizontal_behaviour_type", "int", number(2)),
      keyword_only("elasticity", "float", number(1000.0)),
      keyword_only("default_elasticity", "int", number(1)),
  });
}();

// The one parameter whose key in the document is not its name.
inline constexpr const char* pop_parameter = "pop";
inline constexpr const char* pop_key = "pop_";

static_assert(vocabulary.size() == 106);

}  // namespace dsettlement::soil
