"""Connections whose waits all end at one point of time."""

import socket
import time

import httpcore
import pytest
from sembra.local.client.deadline import Network, Stream


def test_address_that_this_machine_cannot_use_is_passed_over(
    monkeypatch: pytest.MonkeyPatch,
) -> None:
    unknown_kind = 99
    with socket.create_server(("127.0.0.1", 0)) as listener:
        address = listener.getsockname()
        found = [
            (socket.AF_INET, kind, 0, "", address) for kind in (unknown_kind, socket.SOCK_STREAM)
        ]
        monkeypatch.setattr(socket, "getaddrinfo", lambda *_, **__: found)
        stream = Network().connect_tcp(*address)
        assert stream.get_extra_info("socket").getpeername() == address
        stream.close()
        del found[1]
        with pytest.raises(httpcore.ConnectError):
            Network().connect_tcp(*address)


def test_connection_for_which_no_time_is_left() -> None:
    with socket.create_server(("127.0.0.1", 0)) as listener:
        host, port = listener.getsockname()
        with pytest.raises(httpcore.ConnectTimeout, match="the time is over"):
            Network().connect_tcp(host, port, time.monotonic() - 1)


def test_stream_has_no_limit_where_none_is_given() -> None:
    ours, theirs = socket.socketpair()
    with theirs:
        stream = Stream(ours)
        stream.write(b"question")
        assert theirs.recv(100) == b"question"
        assert not stream.get_extra_info("is_readable")
        theirs.sendall(b"answer")
        assert stream.get_extra_info("is_readable")
        assert stream.read(100) == b"answer"
        assert stream.get_extra_info("ssl_object") is None
        assert stream.get_extra_info("server_addr") is None
        stream.close()
        assert stream.get_extra_info("is_readable")


def test_stream_whose_time_is_over() -> None:
    ours, theirs = socket.socketpair()
    stream = Stream(ours)
    over = time.monotonic() - 1
    with theirs:
        with pytest.raises(httpcore.ReadTimeout, match="the time is over"):
            stream.read(1, over)
        with pytest.raises(httpcore.WriteTimeout, match="the time is over"):
            stream.write(b"x", over)
    stream.close()
