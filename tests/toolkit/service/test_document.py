"""What the service refuses, and in which words."""

import copy
import json
from collections.abc import Callable, Iterator
from concurrent.futures import ThreadPoolExecutor
from threading import Event
from typing import Any

import httpx
import pytest
from sembra.local.service.frame import Frame
from sembra.local.service.target import SMALL

from tests.toolkit.conftest import PATH
from tests.toolkit.documents import document_1d, document_2d, drain, soil
from tests.toolkit.service.served import served

JSON = {"Content-Type": "application/json"}
LOAD = {"name": "a", "type": 3, "time": 0, "unit_weight": 20.0, "height": 1.0, "y_application": 0.0}


@pytest.fixture(scope="module")
def client() -> Iterator[httpx.Client]:
    with served() as url, httpx.Client(base_url=url, trust_env=False) as client:
        yield client


@pytest.fixture
def refusal(client: httpx.Client) -> Callable[[dict[str, Any]], str]:
    def send(document: dict[str, Any]) -> str:
        response = client.post(PATH, json={"input": document})
        assert response.status_code == 422, response.text
        assert list(response.json()) == ["reason"]
        reason: str = response.json()["reason"]
        return reason

    return send


@pytest.mark.parametrize("document", [document_1d(), document_2d()], ids=["1D", "2D"])
def test_good_document_is_accepted(client: httpx.Client, document: dict[str, Any]) -> None:
    response = client.post(PATH, json={"input": document})
    assert response.status_code == 200, response.text
    assert response.json()["input_file"].startswith("INPUT FILE FOR D-SETTLEMENT\n")


@pytest.mark.parametrize("document", [document_1d(), document_2d()], ids=["1D", "2D"])
def test_every_key_is_required(refusal: Any, document: dict[str, Any]) -> None:
    for key in document:
        if key != "model_type":
            reason = refusal({k: v for k, v in document.items() if k != key})
            name = "vertical drain" if key == "vertical_drain" else key
            assert reason == f"{name} is missing"


def test_every_soil_key_is_required(refusal: Any) -> None:
    assert len(soil()) == 110
    for key in soil():
        reason = refusal(document_1d(soils=[{k: v for k, v in soil().items() if k != key}]))
        name = f"material {'1' if key == 'name' else repr('Clay')}"
        assert reason == f"{name}, {'pop' if key == 'pop_' else key} is missing"


@pytest.mark.parametrize(
    ("key", "value", "reason"),
    [
        ("colour", 1, "colour is not known"),
        ("soils", [soil(pop=1.0)], "material 'Clay', pop is not known"),
        (
            "soils",
            [soil(), soil("Peat", gam_dry="1")],
            "material 'Peat', gam_dry: input should be a valid number",
        ),
        ("soils", [soil(gam_dry=True)], "material 'Clay', gam_dry: input should be a valid number"),
        (
            "soils",
            [soil(drained=True)],
            "material 'Clay', drained: input should be a valid integer",
        ),
        ("soils", [soil(drained=0.5)], "material 'Clay', drained: input should be a valid integer"),
        ("soils", [soil(cp=None)], "material 'Clay', cp: input should be a valid number"),
        (
            "soils",
            [soil("a\nb")],
            "material 'a\\nb', name must be a single line without control characters",
        ),
        ("soils", [soil("[END OF SOIL]")], "material '[END OF SOIL]', name must not begin"),
        ("title_1", " [Results]", "title_1 must not begin with '[', which begins a section"),
        ("title_2", "a\u2028b", "title_2 must be a single line without control characters"),
        ("company", "a\rb", "company must be a single line without control characters"),
        ("file_name", 3, "file_name: input should be a valid string"),
        ("maintain_profile", 1, "maintain_profile: input should be a valid boolean"),
        ("profile_time", "1", "profile_time: input should be a valid integer"),
        ("residual_times", [1, 2.5], "calculation time 2: input should be a valid integer"),
        ("verticals", [{"x": False}], "vertical 1, x: input should be a valid number"),
        ("calculation_model", 3, "calculation_model: input should be less than or equal to 2"),
        ("consolidation_model", -1, "consolidation_model: input should be greater than or equal"),
        ("strain_type", "linear", "strain_type: input should be 'Linear' or 'Natural'"),
        ("other_loads", [LOAD | {"type": 2}], "load 'a', type: input should be greater than"),
        ("other_loads", [LOAD | {"name": "[x]"}], "load '[x]', name must not begin with '['"),
        ("vertical_drain", drain(grid=3), "vertical drain, grid: input should be less than"),
        (
            "vertical_drain",
            drain(detailed_schedule=[(0.0, 1.0)]),
            "vertical drain, detailed_schedule[0]: list should have at least 3 items",
        ),
        ("model_type", 2, "model_type must be 0 (1D) or 1 (2D)"),
        ("model_type", True, "model_type must be 0 (1D) or 1 (2D)"),
        ("model_type", None, "model_type must be 0 (1D) or 1 (2D)"),
    ],
)
def test_reason_names_the_key(refusal: Any, key: str, value: Any, reason: str) -> None:
    assert refusal(document_1d(**{key: value})).startswith(reason)


@pytest.mark.parametrize(
    ("change", "reason"),
    [
        ({"layers": []}, "layers: list should have at least 1 item"),
        ({"layers": [(0.0,)]}, "layer 1, material is missing"),
        ({"layers": [(0.0, "Clay", 1)]}, "layer 1 of 'Clay'"),
        ({"layers": [("Clay", 0.0)]}, "layer 1, top level: input should be a valid number"),
        (
            {"layers": [(0.0, "Mud")]},
            "layer 1 of 'Mud': there is no material 'Mud'",
        ),
        ({"phreatic_level": "x"}, "phreatic_level: input should be a valid number"),
        ({"depth": 1}, "depth is not known"),
    ],
)
def test_geometry_of_a_column(refusal: Any, change: dict[str, Any], reason: str) -> None:
    document = document_1d()
    document["geometry"] |= change
    assert refusal(document).startswith(reason)


@pytest.mark.parametrize(
    ("change", "reason"),
    [
        ({"curves": [(1, 2), (3, 5)]}, "curve 2: there is no point 5"),
        ({"curves": [(0, 2), (3, 4)]}, "curve 1: there is no point 0"),
        ({"boundaries": [[1], [3]]}, "boundary 2: there is no curve 3"),
        ({"pl_lines": [[0]]}, "pl-line 1: there is no curve 0"),
        ({"phreatic_line": 0}, "phreatic_line: there is no pl-line 0"),
        ({"phreatic_line": 2}, "phreatic_line: there is no pl-line 2"),
        ({"layers": []}, "layers: list should have at least 1 item"),
        ({"points": [(0.0, 0.0)]}, "point 1"),
    ],
)
def test_geometry_of_a_plane(refusal: Any, change: dict[str, Any], reason: str) -> None:
    assert refusal(document_2d(**change)).startswith(reason)


@pytest.mark.parametrize(
    ("change", "reason"),
    [
        ({"material": "Mud"}, "layer 1 of 'Mud': there is no material 'Mud'"),
        ({"boundary_top": 2}, "layer 1 of 'Clay': there is no boundary 2"),
        ({"boundary_bottom": -1}, "layer 1 of 'Clay': there is no boundary -1"),
        ({"pl_top": 2}, "layer 1 of 'Clay': there is no pl-line 2"),
        (
            {"pl_bottom": False},
            "layer 1 of 'Clay', pl_line_bottom: input should be a valid integer",
        ),
    ],
)
def test_layer_of_a_plane(refusal: Any, change: dict[str, Any], reason: str) -> None:
    document = copy.deepcopy(document_2d())
    document["layers"][0] |= change
    assert refusal(document).startswith(reason)


@pytest.mark.parametrize("code", [0, 1, 99])
def test_codes_of_pl_lines_are_accepted(client: httpx.Client, code: int) -> None:
    document = document_2d()
    document["layers"][0] |= {"pl_top": code, "pl_bottom": code}
    assert client.post(PATH, json={"input": document}).status_code == 200


@pytest.mark.parametrize("number", ["NaN", "Infinity", "-Infinity", "1e999", "1" + "0" * 400])
def test_number_that_is_not_finite(client: httpx.Client, number: str) -> None:
    text = json.dumps({"input": document_1d(verticals=[{"x": "HERE"}])}).replace('"HERE"', number)
    response = client.post(PATH, content=text, headers=JSON)
    assert response.status_code == 422
    assert response.json()["reason"].startswith("vertical 1, x: input should be a")


def test_only_some_of_many_reasons_are_told(refusal: Any) -> None:
    reason = refusal(document_1d(soils=[{}]))
    assert reason.count("is missing") == 5
    assert reason.endswith("; and more")


@pytest.mark.parametrize("body", [b"", b"{", b"\xff", b"{'input': 1}", b'"\\ud800"'])
def test_body_that_is_not_json(client: httpx.Client, body: bytes) -> None:
    response = client.post(PATH, content=body, headers=JSON)
    assert response.status_code == 400
    assert "invalid JSON" in response.json()["reason"]


@pytest.mark.parametrize("body", [[], 3, {}, {"input": 3}, {"input": document_1d(), "more": 1}])
def test_body_of_another_shape(client: httpx.Client, body: Any) -> None:
    assert client.post(PATH, json=body).status_code == 422


def test_other_paths_and_methods_have_a_reason_too(client: httpx.Client) -> None:
    wrong_method = client.get(PATH)
    assert (wrong_method.status_code, wrong_method.headers["allow"]) == (405, "POST")
    assert wrong_method.json() == {"reason": f"Method Not Allowed: GET /{PATH}"}
    assert client.post("/nowhere").json() == {"reason": "Not Found: POST /nowhere"}


def test_fault_of_the_service_has_a_reason(
    client: httpx.Client, monkeypatch: pytest.MonkeyPatch
) -> None:
    def fail(_: object) -> str:
        raise LookupError("no template")

    monkeypatch.setattr("sembra.local.service.answer.fill", fail)
    response = client.post(PATH, json={"input": document_1d()})
    assert response.status_code == 500
    assert response.json()["reason"] == "the template can't be filled (LookupError: no template)"
    monkeypatch.undo()
    assert client.post(PATH, json={"input": document_1d()}).status_code == 200


def test_small_document_does_not_wait_for_a_large_one(
    client: httpx.Client, monkeypatch: pytest.MonkeyPatch
) -> None:
    taken, going_on = Event(), Event()

    def wait(document: Frame) -> str:
        if document.company != "small":
            taken.set()
            assert going_on.wait(30)
        return "text"

    monkeypatch.setattr("sembra.local.service.answer.fill", wait)
    with ThreadPoolExecutor(1) as threads:
        large = document_1d(company="x" * SMALL)
        answer = threads.submit(client.post, PATH, json={"input": large})
        try:
            assert taken.wait(30)
            small = client.post(PATH, json={"input": document_1d(company="small")})
            assert not answer.done()
        finally:
            going_on.set()
        assert (small.status_code, answer.result().status_code) == (200, 200)


def test_integers_stand_for_numbers_and_whole_numbers_for_integers(client: httpx.Client) -> None:
    values = {"verticals": [{"x": 3}], "residual_times": [1.0, 2], "profile_time": 0.0}
    texts = [
        client.post(PATH, json={"input": document_1d(**document)}).json()["input_file"]
        for document in (values, {"verticals": [{"x": 3.0}], "residual_times": [1, 2]})
    ]
    assert texts[0] == texts[1]
