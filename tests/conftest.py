"""What the tests share: ready models, the soil vocabulary, and a recorder in the post's place."""

import gc
import signal
from collections.abc import Callable
from typing import Any

import pytest
import sembra.core
from sembra.core import Color
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    DrainGrid,
    DrainType,
    Model1D,
    VerticalDrain,
    _Model,
)

Factory = Callable[..., Any]

STEMS = (
    "gam_dry gam_wet cv pc pri_comp_index sec_comp_index sec_comp_rate ocr permeability_ver pop "
    "permeability_hor_factor initial_void_ratio permeability_strain_modulus limit_stress cp cp1 "
    "cs cs1 ap asec car ca r_ratio c_ratio s_ratio cr_index cc_index csw_index"
)


def pytest_configure() -> None:
    """Let Ctrl-C mean to the processes that tests start what it means in a terminal.

    Whoever runs the tests in the background of a shell has it ignored, and would hand that on.
    """
    if signal.getsignal(signal.SIGINT) is signal.SIG_IGN:
        signal.signal(signal.SIGINT, signal.default_int_handler)


def pytest_collection_finish() -> None:
    """Keep the collector of garbage away from the thousands of tests that stay to the end."""
    gc.collect()
    gc.freeze()


class PostRecorder:
    """Stands in the place of the post: notes every call and gives the answer it was told."""

    def __init__(self) -> None:
        self.calls: list[tuple[tuple[Any, ...], dict[str, Any]]] = []
        self.answer: Any = {"input_file": "Input file for D-Settlement\r\n"}
        self.error: BaseException | None = None

    def __call__(self, *args: Any, **kwargs: Any) -> Any:
        self.calls.append((args, kwargs))
        if self.error is not None:
            raise self.error
        return self.answer

    @property
    def document(self) -> Any:
        """The model's document of the latest call."""
        (_, body), _ = self.calls[-1]
        return body["input"]


class Frame(_Model):
    """The least that makes the common frame of all models concrete."""

    def __init__(self, *args: Any, **options: Any) -> None:
        super().__init__(*args, **options)

    def _serialize(self) -> dict[str, Any]:
        return super()._serialize()

    @property
    def _min_vertical_drains(self) -> float:
        return -10.0

    @property
    def _max_vertical_drains(self) -> float:
        return 0.0


@pytest.fixture
def post(monkeypatch: pytest.MonkeyPatch) -> PostRecorder:
    """Keep every document in the process and note it."""
    recorder = PostRecorder()
    monkeypatch.setattr(sembra.core, "_post_on_addon_endpoint", recorder)
    return recorder


@pytest.fixture
def frame_class() -> type[_Model]:
    """A concrete model that adds nothing to the frame."""
    return Frame


@pytest.fixture
def new_frame() -> Factory:
    """Make a model that adds nothing to the frame; options by keyword."""

    def make(**options: Any) -> Any:
        options = {
            "calculation_model": CalculationModel.NEN_KOPPEJAN,
            "consolidation_model": ConsolidationModel.TERZAGHI,
            "create_default_materials": False,
        } | options
        return Frame(**options)

    return make


@pytest.fixture
def new_model_1d() -> Factory:
    """Make a one-dimensional model of the class `cls`; options by keyword."""

    def make(cls: Any = Model1D, **options: Any) -> Any:
        options = {
            "calculation_model": CalculationModel.NEN_KOPPEJAN,
            "consolidation_model": ConsolidationModel.TERZAGHI,
        } | options
        return cls(**options)

    return make


@pytest.fixture
def new_strip_drain() -> Factory:
    """Make a vertical drain of strips that fits the default geometry; parameters by keyword."""

    def make(cls: Any = VerticalDrain, **parameters: Any) -> Any:
        parameters = {
            "drain_type": DrainType.STRIP,
            "range_from": 5.0,
            "range_to": 90.0,
            "bottom_position": -4.0,
            "center_to_center": 2.0,
            "width_diameter": 0.1,
            "thickness": 0.003,
            "grid": DrainGrid.TRIANGULAR,
            "start_of_drainage": 0.0,
            "phreatic_level_in_drain": -1.0,
        } | parameters
        return cls(**parameters)

    return make


@pytest.fixture
def build_story(new_model_1d: Factory, new_strip_drain: Factory) -> Factory:
    """Make a one-dimensional model that is filled with all that such a model can hold."""

    def make(cls: Any = Model1D, **options: Any) -> Any:
        options = {"vertical_drain": new_strip_drain(bottom_position=-0.5)} | options
        model = new_model_1d(cls, **options)
        model.create_material("my_mat", 21.0, 19.0, color=Color(0, 0, 0), pop=5.0)
        model.update_geometry(-1.0, [(1.0, "Loam"), (0.0, "my_mat")], phreatic_level=-3.0)
        model.create_uniform_load("my_load", 0, 0.001, 0.0, 0.0)
        model.set_calculation_times(1, 4, 2, 5)
        return model

    return make


@pytest.fixture
def soil_parameters() -> dict[str, int | float]:
    """The keyword-only soil parameters of `create_material`, in order, with their defaults."""
    base: dict[str, int | float] = {
        "initial_void_ratio": 0.0,
        "cohesion": 0.0,
        "phi": 0.0,
        "precon_isotache_type": 0,
        "precon_koppejan_type": 0,
        "use_equivalent_age": 0,
        "equivalent_age": 0.0,
        "pc": 0.0,
        "ocr": 1.0,
        "pop": 0.0,
        "limit_stress": 1.0,
        "drained": 0,
        "ap_as_approximation_by_cp_cs": 0,
        "cv": 10.0,
        "permeability_ver": 0.05,
        "permeability_hor_factor": 1.0,
        "storage_type": 0,
        "permeability_strain_modulus": 1e15,
        "use_prob_defaults": 1,
    }
    deviations = {f"std_{stem}": 0.0 for stem in STEMS.split()}
    distributions = {f"dist_{stem}": 2 for stem in STEMS.split()}
    correlations = {
        "cor_cp_cp1": 0.0,
        "cor_cs_cp1": 0.0,
        "cor_cs1_cp1": 0.0,
        "cor_ap_cp1": 0.0,
        "cor_asec_cp1": 0.0,
        "cor_cr_index_cc_index": 0.0,
        "cor_r_ratio_c_ratio": 0.0,
        "cor_ca_cc_index_or_c_ratio": 0.0,
        "cor_pri_comp_index_sec_comp_index": 0.0,
        "cor_sec_comp_rate_sec_comp_index": 0.0,
    }
    compression: dict[str, int | float] = {
        "cp": 1.0,
        "cp1": 1.0,
        "cs": 1.0,
        "cs1": 1.0,
        "ap": 1.0,
        "asec": 1.0,
        "car": 0.0,
        "ca": 1.0,
        "comp_ratio": 1,
        "r_ratio": 1.0,
        "c_ratio": 1.0,
        "s_ratio": 0.0,
        "cr_index": 1.0,
        "cc_index": 1.0,
        "csw_index": 0.0,
        "pri_comp_index": 0.01,
        "sec_comp_index": 0.1,
        "sec_comp_rate": 0.005,
    }
    horizontal: dict[str, int | float] = {
        "horizontal_behaviour_type": 2,
        "elasticity": 1000.0,
        "default_elasticity": 1,
    }
    return base | deviations | distributions | correlations | compression | horizontal
