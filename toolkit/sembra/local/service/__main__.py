"""The service on its own: python -m sembra.local.service --port 8000."""

import argparse

import uvicorn

from sembra.local.service.app import app


def main() -> None:
    """Serve until interrupted."""
    parser = argparse.ArgumentParser(prog="python -m sembra.local.service", description=__doc__)
    parser.add_argument("--host", default="127.0.0.1", help="address to listen on")
    parser.add_argument("--port", type=int, default=8000, help="port to listen on")
    arguments = parser.parse_args()
    uvicorn.run(app, host=arguments.host, port=arguments.port, lifespan="off")


if __name__ == "__main__":
    main()
