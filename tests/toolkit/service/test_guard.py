"""Whom the service answers, and how much it takes."""

import asyncio
import json
import os
import re
import socket
import subprocess
import sys
from collections.abc import Callable, Iterator
from typing import Any

import httpx
import pytest
from sembra.core import _post_on_addon_endpoint
from sembra.errors import InternalError
from sembra.local.service.document import RefusalError
from sembra.local.service.guard import DRAINED, read_body

from tests.toolkit.conftest import PATH
from tests.toolkit.documents import document_1d, soil
from tests.toolkit.service.served import served

BODY = json.dumps({"input": document_1d()}).encode()


@pytest.fixture(scope="module")
def client() -> Iterator[httpx.Client]:
    with served() as url, httpx.Client(base_url=url, trust_env=False, timeout=60) as client:
        yield client


def send(client: httpx.Client, **headers: str) -> httpx.Response:
    given = {"Content-Type": "application/json"} | {
        name.replace("_", "-"): value for name, value in headers.items()
    }
    return client.post(PATH, content=BODY, headers=given)


def own_host(client: httpx.Client) -> str:
    return client.base_url.netloc.decode()


def test_own_names_are_answered(client: httpx.Client) -> None:
    port = client.base_url.port
    for host in (f"127.0.0.1:{port}", f"localhost:{port}", "LOCALHOST", f"[::1]:{port}"):
        assert send(client, Host=host).status_code == 200


@pytest.mark.parametrize(
    "host",
    ["evil.example", "127.0.0.1.evil.example", "192.0.2.1", "", "[", "localhost@evil.example"],
)
def test_other_names_are_refused(client: httpx.Client, host: str) -> None:
    response = send(client, Host=host)
    assert response.status_code == 403, response.text
    assert "input_file" not in response.text


def test_own_pages_are_answered(client: httpx.Client) -> None:
    assert send(client, Origin=f"http://{own_host(client)}").status_code == 200


@pytest.mark.parametrize("origin", ["http://evil.example", "null", "http://localhost:1", "file://"])
def test_pages_of_other_hosts_are_refused(client: httpx.Client, origin: str) -> None:
    response = send(client, Origin=origin)
    assert response.status_code == 403
    assert "pages of other hosts" in response.json()["reason"]
    assert "access-control-allow-origin" not in response.headers


@pytest.mark.parametrize("kind", ["text/plain", "application/x-www-form-urlencoded", "", "json"])
def test_other_content_types_are_refused(client: httpx.Client, kind: str) -> None:
    """These are what a page can post without asking the service first."""
    response = send(client, Content_Type=kind)
    assert response.status_code == 415
    assert "application/json" in response.json()["reason"]


@pytest.mark.parametrize("kind", ["application/json", "Application/JSON; charset=utf-8"])
def test_content_type_may_be_written_in_other_ways(client: httpx.Client, kind: str) -> None:
    assert send(client, Content_Type=kind).status_code == 200


def test_larger_document_than_the_limit(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setenv("SEMBRA_ADDON_LIMIT", "0.5")
    assert _post_on_addon_endpoint(PATH, {"input": document_1d()})
    with pytest.raises(InternalError, match=r"larger than the 0\.5 megabytes .*SEMBRA_ADDON_LIMIT"):
        _post_on_addon_endpoint(PATH, {"input": document_1d(company="x" * 600_000)})
    monkeypatch.setenv("SEMBRA_ADDON_LIMIT", "1")
    assert _post_on_addon_endpoint(PATH, {"input": document_1d(company="x" * 600_000)})


@pytest.mark.parametrize("setting", ["0", "-1", "nan", "inf", "much"])
def test_limit_that_is_none(setting: str, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setenv("SEMBRA_ADDON_LIMIT", setting)
    with pytest.raises(InternalError, match="SEMBRA_ADDON_LIMIT must be a number above 0"):
        _post_on_addon_endpoint(PATH, {"input": document_1d()})


def test_model_of_100_000_curves_is_within_the_default_limit() -> None:
    digits = 0.12345678901234567
    points = [(digits * number, -digits, 0) for number in range(100_000)]
    curves = [(number, number + 1) for number in range(100_000)]
    boundaries = [list(range(start, start + 1000)) for start in range(0, 100_000, 1000)]
    document = document_1d(points=points, curves=curves, boundaries=boundaries, pl_lines=boundaries)
    with pytest.raises(InternalError, match="is not known"):
        _post_on_addon_endpoint(PATH, {"input": document})


FLOODS: dict[str, Callable[[], str]] = {
    "numbers": lambda: '{"input": 1' + ",1" * 7_900_000 + "}",
    "list": lambda: '{"input": [1' + ",1" * 7_900_000 + "]}",
    "soils": lambda: json.dumps({"input": document_1d(soils=["HERE"])}).replace(
        '"HERE"', "1" + ",1" * 7_900_000
    ),
    "empty soils": lambda: json.dumps({"input": document_1d(soils=["HERE"])}).replace(
        '"HERE"', "{}" + ",{}" * 5_200_000
    ),
    "times": lambda: json.dumps({"input": document_1d(residual_times=["HERE"])}).replace(
        '"HERE"', "true" + ",true" * 3_100_000
    ),
    "keys": lambda: json.dumps(
        {"input": document_1d(), **{f"{number:x}": 1 for number in range(1_200_000)}}
    ),
    "long key": lambda: json.dumps({"input": document_1d(), "x" * 15_900_000: 1}),
    "soil of many keys": lambda: json.dumps(
        {"input": document_1d(soils=[soil() | {f"{n:x}": 1 for n in range(1_200_000)}])}
    ),
    "name": lambda: json.dumps({"input": document_1d(soils=[soil("[" + "x" * 15_000_000)])}),
}
"""Each is made in its test: they are of 15 MB, and every process of the tests imports them."""

SEND_FLOOD = """if True:
    import resource, sys
    from sembra.local.service.document import RefusalError, read_document
    body = sys.stdin.buffer.read()
    assert 14e6 < len(body) < 16e6, len(body)
    before = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
    try:
        read_document(body)
    except RefusalError as refusal:
        print(resource.getrusage(resource.RUSAGE_SELF).ru_maxrss - before, str(refusal)[:3000])
"""


@pytest.mark.parametrize("flood", FLOODS)
def test_flood_takes_little_memory(flood: str) -> None:
    pytest.importorskip("resource")
    done = subprocess.run(
        [sys.executable, "-c", SEND_FLOOD],
        input=FLOODS[flood]().encode(),
        capture_output=True,
        timeout=120,
        check=True,
        env={**os.environ, "PYTHONPATH": os.pathsep.join(filter(None, sys.path))},
    )
    kilobytes, _, reason = done.stdout.decode().partition(" ")
    assert int(kilobytes) < 600_000
    assert 0 < len(reason) < 1500


def test_caller_that_goes_away_leaves_no_word(capfd: pytest.CaptureFixture[str]) -> None:
    head = f"POST /{PATH} HTTP/1.1\r\nHost: localhost\r\n"
    head += "Content-Type: application/json\r\nContent-Length: 100\r\n\r\n{"
    with served() as url, httpx.Client(base_url=url, trust_env=False) as client:
        for text in (head, head[:50], "nonsense\r\n\r\n", "\x00" * 1000):
            with socket.create_connection(
                (client.base_url.host, client.base_url.port or 0)
            ) as caller:
                caller.sendall(text.encode())
                # This request has been taken in when the next one is answered.
                assert send(client).status_code == 200
        assert send(client).status_code == 200
    assert "Traceback" not in capfd.readouterr().err


@pytest.mark.parametrize("name", ["", "addons.example"])
def test_names_of_the_service_alone(name: str) -> None:
    with socket.create_server(("127.0.0.1", 0)) as free:
        port = free.getsockname()[1]
    service = subprocess.Popen(
        [sys.executable, "-m", "sembra.local.service", "--port", str(port)]
        + (["--name", name] if name else []),
        env={**os.environ, "PYTHONPATH": os.pathsep.join(filter(None, sys.path))},
        stderr=subprocess.PIPE,
        text=True,
    )
    try:
        assert service.stderr is not None
        for line in service.stderr:
            if re.search("running on", line):
                break
        with httpx.Client(base_url=f"http://127.0.0.1:{port}", trust_env=False) as client:
            assert send(client).status_code == 200
            named = send(client, Host=f"addons.example:{port}")
            assert named.status_code == (200 if name else 403)
    finally:
        service.terminate()
        service.communicate(timeout=30)


def test_body_that_does_not_end_is_taken_in_up_to_some_times_the_limit(
    monkeypatch: pytest.MonkeyPatch,
) -> None:
    monkeypatch.setenv("SEMBRA_ADDON_LIMIT", "0.5")
    taken = 0

    async def receive() -> dict[str, Any]:
        nonlocal taken
        taken += 1
        return {"type": "http.request", "body": b"x" * 100_000, "more_body": True}

    with pytest.raises(RefusalError, match=r"larger than the 0\.5 megabytes"):
        asyncio.run(read_body(receive))
    assert taken == DRAINED * 5 + 1
