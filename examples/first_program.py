"""The whole road at its shortest: a layer of soft clay under 1.5 m of sand."""

import sembra.external.dsettlement as ds

model = ds.Model1D(ds.CalculationModel.NEN_KOPPEJAN, ds.ConsolidationModel.TERZAGHI)
model.create_material(
    "Soft clay", 14.5, 14.5, cp=30.0, cp1=9.0, cs=270.0, cs1=80.0, cv=1e-7, ocr=1.5
)
model.update_geometry(-5.0, [(0.0, "Soft clay")], phreatic_level=-1.0)
model.create_uniform_load("Sand", 0, 18.0, 1.5, 0.0)
model.set_calculation_times(10, 100, 1000, 10000)

analysis = ds.DSettlementAnalysis(model.generate_input_file())
analysis.execute(timeout=60)
result = ds.OutputFileParser(analysis.get_sld_file()).residual_times[1]
for time, settlement in zip(result["Time"], result["Settlement"], strict=True):
    print(f"{time:5.0f} days: {settlement:.3f} m")
