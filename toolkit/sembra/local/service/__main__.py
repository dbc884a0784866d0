"""The service on its own: python -m sembra.local.service --port 8000."""

import argparse

import uvicorn
from uvicorn.config import LOGGING_CONFIG

from sembra.local.service.app import make_app
from sembra.local.service.guard import LOOPBACK

LOG = {"handlers": ["default"], "level": "INFO"}
"""The service's own faults go to where the server's words go."""


def main() -> None:
    """Serve until interrupted."""
    parser = argparse.ArgumentParser(prog="python -m sembra.local.service", description=__doc__)
    parser.add_argument("--host", default="127.0.0.1", help="address to listen on")
    parser.add_argument("--port", type=int, default=8000, help="port to listen on")
    parser.add_argument(
        "--name",
        action="append",
        default=[],
        help="a name by which others call this machine, such as addons.example; may be repeated",
    )
    arguments = parser.parse_args()
    names = LOOPBACK | {name.lower() for name in (arguments.host, *arguments.name)}
    uvicorn.run(
        make_app(names),
        host=arguments.host,
        port=arguments.port,
        ws="none",
        lifespan="off",
        log_config={**LOGGING_CONFIG, "loggers": {**LOGGING_CONFIG["loggers"], "sembra": LOG}},
    )


if __name__ == "__main__":
    main()
