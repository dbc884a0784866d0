"""Where chance comes from: another seed in each run, and files that repeat what was found."""

import hashlib
import json
import os
import secrets
from pathlib import Path
from typing import Any

FINDINGS = Path("fuzz-findings")


def new_seed() -> str:
    """The seed of this run, from `SEMBRA_SEED` or new; a test that fails has printed it."""
    return os.environ.get("SEMBRA_SEED") or secrets.token_hex(4)


def save_finding(kind: str, finding: dict[str, Any]) -> Path:
    """Write what a test found to a file that `SEMBRA_REPLAY` names to repeat it."""
    content = json.dumps(finding, indent=1)
    FINDINGS.mkdir(exist_ok=True)
    path = FINDINGS / f"{kind}-{hashlib.sha256(content.encode()).hexdigest()[:12]}.json"
    path.write_text(content)
    return path


def replayed(kind: str) -> Any:
    """The finding of a kind that is to be repeated, if any."""
    path = Path(os.environ.get("SEMBRA_REPLAY", "-"))
    return json.loads(path.read_text()) if path.name.startswith(f"{kind}-") else None
