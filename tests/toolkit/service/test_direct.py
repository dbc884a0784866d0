"""The service within the process."""

import json
import os
import subprocess
import sys
import threading
import time
from typing import Any

import pytest
from sembra.core import _post_on_addon_endpoint
from sembra.errors import InternalError
from sembra.local.service.frame import Frame
from sembra.local.service.target import SMALL

from tests.toolkit.conftest import PATH
from tests.toolkit.documents import document_1d, document_2d
from tests.toolkit.service.served import served

LARGE = document_1d(company="x" * SMALL)


def post(document: Any, timeout: float = 60.0) -> dict[str, Any]:
    return _post_on_addon_endpoint(PATH, {"input": document}, timeout=timeout)


@pytest.mark.parametrize(
    "document", [document_1d(), document_2d(), LARGE], ids=["1D", "2D", "large"]
)
def test_answer_is_that_of_the_service_over_http(
    document: dict[str, Any], monkeypatch: pytest.MonkeyPatch
) -> None:
    directly = post(document)
    with served() as url:
        monkeypatch.setenv("SEMBRA_ADDON_URL", url)
        assert post(document) == directly


@pytest.mark.parametrize("document", [1, document_1d(soils=[1])])
def test_refusal_is_that_of_the_service_over_http(
    document: Any, monkeypatch: pytest.MonkeyPatch
) -> None:
    with served() as url:
        reasons = []
        for address in ("", url):
            monkeypatch.setenv("SEMBRA_ADDON_URL", address)
            with pytest.raises(InternalError, match="refused the document: ") as refused:
                post(document)
            reasons.append(refused.value.__notes__)
    assert reasons[0] == reasons[1]


def test_other_paths_are_refused() -> None:
    with pytest.raises(InternalError, match="Not Found: POST nowhere/"):
        _post_on_addon_endpoint("nowhere/", {"input": document_1d()})


@pytest.mark.parametrize("document", [document_1d(), LARGE], ids=["small", "large"])
def test_fault_of_the_service(
    document: dict[str, Any],
    monkeypatch: pytest.MonkeyPatch,
    caplog: pytest.LogCaptureFixture,
    capfd: pytest.CaptureFixture[str],
) -> None:
    def fail(_: object) -> str:
        raise LookupError("no template")

    monkeypatch.setattr("sembra.local.service.answer.fill", fail)
    with pytest.raises(InternalError, match=r"service failed: the template .* no template"):
        post(document)
    assert "The template can't be filled" in caplog.text
    assert capfd.readouterr().err == ""


def test_large_document_for_which_memory_runs_out(monkeypatch: pytest.MonkeyPatch) -> None:
    def run_out(_body: bytes) -> None:
        raise MemoryError

    monkeypatch.setattr("sembra.local.service.direct.answer", run_out)
    with pytest.raises(MemoryError):
        post(LARGE)


def test_large_document_that_takes_too_long(monkeypatch: pytest.MonkeyPatch) -> None:
    going_on = threading.Event()

    def wait(_document: Frame) -> str:
        going_on.wait(30)
        return "text"

    monkeypatch.setattr("sembra.local.service.answer.fill", wait)
    begin = time.monotonic()
    with pytest.raises(InternalError, match=r"service did not answer within 0\.2 seconds"):
        post(LARGE, timeout=0.2)
    assert time.monotonic() - begin < 10
    going_on.set()
    assert post(LARGE, timeout=float("inf")) == {"input_file": "text"}


def test_no_port_is_opened_and_no_thread_is_kept() -> None:
    code = """if True:
        import json, os, socket, sys, threading
        def refuse(*_, **__): raise SystemExit("a socket")
        socket.socket = refuse
        from sembra.core import _post_on_addon_endpoint as post
        post("filldsettlementtemplate/v1/jobs/", {"input": json.load(sys.stdin)})
        print(threading.active_count())
    """
    done = _run(code, json.dumps(document_1d()))
    assert (done.stdout, done.stderr) == ("1\n", "")


@pytest.mark.skipif(not hasattr(os, "fork"), reason="no fork on this system")
def test_forked_child_waits_for_no_lock_of_its_parent() -> None:
    """Those that are made at the first post are held, as another thread may do at any moment."""
    code = """if True:
        import json, os, signal, sys, threading
        made, make = [], threading.Lock
        threading.Lock = lambda: made.append(make()) or made[-1]
        from sembra.core import _post_on_addon_endpoint
        post = lambda: _post_on_addon_endpoint("filldsettlementtemplate/v1/jobs/", document)
        document = {"input": json.load(sys.stdin)}
        post()
        for lock in made:
            lock.acquire(blocking=False)
        if os.fork() == 0:
            signal.alarm(40)
            post()
            os._exit(0)
        print(len(made) > 0, os.wait()[1])
    """
    for document in (document_1d(), LARGE):
        done = _run(code, json.dumps(document))
        # The thread of the large document may be about to end, which Python warns of.
        assert done.stdout == "True 0\n", done.stderr


def test_same_document_gives_the_same_bytes_in_another_process() -> None:
    code = """if True:
        import hashlib, json, sys
        from sembra.core import _post_on_addon_endpoint as post
        answer = post("filldsettlementtemplate/v1/jobs/", {"input": json.load(sys.stdin)})
        print(hashlib.sha256(answer["input_file"].encode()).hexdigest())
    """
    document = json.dumps(document_1d())
    first, second = (_run(code, document, PYTHONHASHSEED=seed) for seed in ("1", "2"))
    assert first.stdout == second.stdout != ""


def test_importing_the_toolkit_loads_no_heavy_module() -> None:
    code = """if True:
        import sys
        import sembra.core, sembra.errors, sembra.external.external_program
        heavy = {"httpcore", "uvicorn", "pydantic", "jinja2", "rich", "starlette", "numpy"}
        print(sorted(heavy & set(sys.modules)))
    """
    assert _run(code).stdout == "[]\n"


def test_first_post_loads_only_what_it_needs() -> None:
    code = """if True:
        import json, sys
        from sembra.core import _post_on_addon_endpoint as post
        post("filldsettlementtemplate/v1/jobs/", {"input": json.load(sys.stdin)})
        needless = {"uvicorn", "h11", "httpcore", "ssl", "urllib.request"}
        needless |= {"numpy", "rich", "concurrent.futures.process"}
        print(sorted(needless & set(sys.modules)))
    """
    assert _run(code, json.dumps(document_1d())).stdout == "[]\n"


def _run(code: str, text: str = "", **environment: str) -> subprocess.CompletedProcess[str]:
    return subprocess.run(
        [sys.executable, "-c", code],
        input=text,
        capture_output=True,
        text=True,
        check=False,
        timeout=60,
        env={**os.environ, "PYTHONPATH": os.pathsep.join(filter(None, sys.path)), **environment},
    )
