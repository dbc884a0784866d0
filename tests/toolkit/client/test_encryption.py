"""Services that are reached by TLS."""

import shutil
import socket
import ssl
import subprocess
import threading
from collections.abc import Iterator
from contextlib import suppress
from pathlib import Path

import pytest
from sembra.core import _post_on_addon_endpoint
from sembra.errors import InternalError
from sembra.local.client import pools

from tests.toolkit.conftest import PATH


@pytest.fixture(autouse=True)
def _certificates_are_read_anew(monkeypatch: pytest.MonkeyPatch) -> Iterator[None]:
    monkeypatch.setattr(pools, "_pools", {})
    pools._tls_context.cache_clear()
    yield
    pools._tls_context.cache_clear()


@pytest.fixture(scope="module")
def certificate(tmp_path_factory: pytest.TempPathFactory) -> tuple[Path, Path]:
    """Return a certificate of this machine's own and its key."""
    openssl = shutil.which("openssl")
    if openssl is None:
        pytest.skip("no openssl on this machine to make a certificate with")
    folder = tmp_path_factory.mktemp("certificate")
    paths = folder / "certificate.pem", folder / "key.pem"
    subprocess.run(
        [openssl, "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2",
         "-subj", "/CN=localhost", "-addext", "subjectAltName=DNS:localhost",
         "-out", str(paths[0]), "-keyout", str(paths[1])],
        check=True,
        capture_output=True,
    )  # fmt: skip
    return paths


@pytest.fixture
def service(
    certificate: tuple[Path, Path], monkeypatch: pytest.MonkeyPatch
) -> Iterator[list[bytes]]:
    """Serve one answer by TLS; what was asked is in the list."""
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(*certificate)
    asked: list[bytes] = []

    def serve() -> None:
        with suppress(OSError):
            connection, _ = listener.accept()
            with context.wrap_socket(connection, server_side=True) as encrypted:
                asked.append(encrypted.recv(10_000))
                encrypted.sendall(b"HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}")
                encrypted.recv(10_000)

    with socket.create_server(("127.0.0.1", 0)) as listener:
        port = listener.getsockname()[1]
        monkeypatch.setenv("SEMBRA_ADDON_URL", f"https://localhost:{port}")
        threading.Thread(target=serve, daemon=True).start()
        yield asked


def test_service_whose_certificate_is_trusted(
    service: list[bytes], certificate: tuple[Path, Path], monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setenv("SSL_CERT_FILE", str(certificate[0]))
    assert _post_on_addon_endpoint(PATH, {"input": None}, timeout=10) == {}
    assert service[0].startswith(f"POST /{PATH} HTTP/1.1\r\n".encode())


def test_service_whose_certificate_is_not_trusted(service: list[bytes]) -> None:
    with pytest.raises(InternalError, match=r"can't be reached.*CERTIFICATE_VERIFY_FAILED"):
        _post_on_addon_endpoint(PATH, {"input": None}, timeout=10)
    assert service == []
