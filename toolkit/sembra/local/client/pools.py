"""The connections that this process keeps: one pool for all services, and one per proxy and TLS."""

import os
import ssl
import threading
from functools import cache

import httpcore

from sembra.local.client.address import Address
from sembra.local.client.deadline import Network, close_streams

MOST_IDLE = 8
"""How many connections are kept while they aren't used."""

_lock = threading.Lock()
_pools: dict[tuple[bool, str | None], httpcore.ConnectionPool] = {}


def pool_for(address: Address) -> httpcore.ConnectionPool:
    """Return the pool of connections to a service.

    A service elsewhere is reached by the proxy that the environment names. Loopback never is.

    Raises:
        ValueError: The proxy's address can't be used.
    """
    key = (address.scheme == "https", None if address.is_loopback else _proxy_for(address))
    with _lock:
        if key not in _pools:
            _pools[key] = _make_pool(*key)
        return _pools[key]


def _make_pool(encrypted: bool, proxy: str | None) -> httpcore.ConnectionPool:
    # Reading the certificates of a machine takes longer than a whole post on loopback.
    context = _tls_context() if encrypted else None
    if proxy is None:
        return httpcore.ConnectionPool(
            ssl_context=context,
            max_connections=None,
            max_keepalive_connections=MOST_IDLE,
            network_backend=Network(),
        )
    try:
        place = Address.parse(proxy)
    except ValueError as error:
        raise ValueError(
            f"the environment names a proxy that is no HTTP address: {error}"
        ) from None
    user = [] if place.authorization is None else [("Proxy-Authorization", place.authorization)]
    return httpcore.HTTPProxy(
        proxy_url=f"{place.origin}/",
        proxy_headers=user,
        ssl_context=context,
        proxy_ssl_context=_tls_context() if place.scheme == "https" else None,
        max_connections=None,
        max_keepalive_connections=MOST_IDLE,
        network_backend=Network(),
    )


def _proxy_for(address: Address) -> str | None:
    # Loaded here: a service on this machine doesn't need it.
    from urllib.request import getproxies, proxy_bypass

    if proxy_bypass(address.host):
        return None
    proxies = getproxies()
    proxy = proxies.get(address.scheme) or proxies.get("all")
    return f"http://{proxy}" if proxy and "://" not in proxy else proxy or None


@cache
def _tls_context() -> ssl.SSLContext:
    return httpcore.default_ssl_context()


def _forget_after_fork() -> None:
    """Keep nothing of the parent: its connections are its own."""
    global _lock
    _lock = threading.Lock()
    _pools.clear()
    close_streams()


if hasattr(os, "register_at_fork"):
    os.register_at_fork(after_in_child=_forget_after_fork)
