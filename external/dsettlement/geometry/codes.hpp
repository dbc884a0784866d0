// The numbers that stand in the place of a pl-line.
#pragma once

namespace dsettlement::geometry {

inline constexpr long no_pressure = 0;
inline constexpr long interpolation = 99;

}  // namespace dsettlement::geometry
