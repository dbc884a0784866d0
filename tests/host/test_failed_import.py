"""An import that fails on the way says why, and what was made before lives on."""

import subprocess
import sys
import textwrap


def run(program: str) -> str:
    """Run a program in a process of its own and return what it prints."""
    done = subprocess.run(
        [sys.executable, "-c", textwrap.dedent(program)],
        capture_output=True,
        text=True,
        timeout=60,
        check=False,
    )
    assert done.returncode == 0, done.stderr
    return done.stdout


def test_a_name_that_a_sister_module_lacks_is_an_import_error() -> None:
    printed = run("""
        import sembra.core
        del sembra.core.File
        try:
            import sembra.external.dsettlement
        except ImportError as error:
            print(error, error.name, error.path == sembra.core.__file__)
    """)
    assert printed.startswith("cannot import name 'File' from 'sembra.core' (")
    assert printed.endswith(" sembra.core True\n")


def test_classes_kept_from_an_import_that_failed_still_work() -> None:
    printed = run("""
        import gc
        import sys
        from sembra.external.external_program import ExternalProgram

        kept = []

        def refuse(cls, **keywords):
            kept.append(sys.modules["sembra.external.dsettlement"])
            raise RuntimeError("no subclass")

        ExternalProgram.__init_subclass__ = classmethod(refuse)
        try:
            import sembra.external.dsettlement
        except RuntimeError as error:
            print(error)
        vertical_class = kept.pop()._Vertical
        gc.collect()
        filling = [bytearray(200) for _ in range(20000)]
        print(vertical_class(3)._serialize())
    """)
    assert printed == "no subclass\n{'x': 3}\n"
