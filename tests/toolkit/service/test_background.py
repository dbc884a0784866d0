"""The service in a thread of this process."""

import json
import os
import subprocess
import sys
import time
from concurrent.futures import ThreadPoolExecutor

import httpx
import pytest
from sembra.errors import InternalError
from sembra.local.service.background import local_service_url, stop_local_service

from tests.toolkit.conftest import PATH
from tests.toolkit.documents import document_1d


def test_is_started_once_for_all_threads() -> None:
    stop_local_service()
    with ThreadPoolExecutor(8) as pool:
        urls = set(pool.map(lambda _: local_service_url(), range(32)))
    assert len(urls) == 1


def test_listens_on_loopback_only() -> None:
    assert local_service_url().startswith("http://127.0.0.1:")


def test_starts_anew_after_a_stop() -> None:
    url = local_service_url()
    stop_local_service()
    with pytest.raises(httpx.ConnectError), httpx.Client(trust_env=False) as client:
        client.get(url)
    with httpx.Client(trust_env=False) as client:
        assert client.get(local_service_url()).status_code == 404


@pytest.mark.skipif(not hasattr(os, "fork"), reason="no fork on this system")
def test_forked_process_starts_its_own() -> None:
    code = """if True:
        import os, warnings
        warnings.simplefilter("ignore")
        from sembra.local.service.background import local_service_url
        url = local_service_url()
        child = os.fork()
        if child == 0:
            os._exit(0 if local_service_url() != url else 1)
        raise SystemExit(os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]))
    """
    assert _run(code).returncode == 0


@pytest.mark.skipif(not hasattr(os, "fork"), reason="no fork on this system")
def test_forked_process_does_not_keep_the_port() -> None:
    code = """if True:
        import os, re, socket, warnings
        warnings.simplefilter("ignore")
        from sembra.local.service.background import local_service_url, stop_local_service
        url = local_service_url()
        end, keep = os.pipe()
        child = os.fork()
        if child == 0:
            os.close(keep)
            os.read(end, 1)
            os._exit(0)
        stop_local_service()
        try:
            socket.create_connection(("127.0.0.1", int(url.rpartition(":")[2])), timeout=10)
        except ConnectionRefusedError:
            print("closed")
        os.close(keep)
        os.waitpid(child, 0)
    """
    done = _run(code)
    assert (done.stdout, done.stderr) == ("closed\n", "")


def test_answers_on_a_kept_connection_do_not_wait_for_confirmations() -> None:
    with httpx.Client(base_url=local_service_url(), trust_env=False) as client:

        def duration() -> float:
            begin = time.perf_counter()
            assert client.post(PATH, json={"input": document_1d()}).status_code == 200
            return time.perf_counter() - begin

        # The first connection may be spared; a machine with much to do spares none.
        duration()
        assert any(duration() < 0.03 for _ in range(100))


def test_a_program_ends_silently_with_the_service_running() -> None:
    code = "from sembra.local.service.background import local_service_url; local_service_url()"
    done = _run(code)
    assert (done.returncode, done.stdout, done.stderr) == (0, "", "")


def test_start_that_takes_too_long(monkeypatch: pytest.MonkeyPatch) -> None:
    stop_local_service()
    monkeypatch.setattr("uvicorn.Server.run", lambda *_: None)
    with pytest.raises(InternalError, match="did not start"):
        local_service_url()


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


def test_first_post_to_the_own_service_loads_only_what_it_needs() -> None:
    code = """if True:
        import json, sys
        from sembra.core import _post_on_addon_endpoint as post
        post("filldsettlementtemplate/v1/jobs/", {"input": json.load(sys.stdin)})
        needless = {"urllib.request", "starlette", "numpy", "rich", "concurrent.futures.process"}
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
