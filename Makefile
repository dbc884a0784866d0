# Everything runs from here. `make` alone lists the targets.

SHELL := /bin/sh
.DEFAULT_GOAL := help
.DELETE_ON_ERROR:

VENV := .venv
BIN := $(VENV)/bin
PIP := $(BIN)/python -m pip --disable-pip-version-check --quiet
FUZZ_TEXTS ?= 200000
FUZZ_SECONDS ?= 60
FUZZ_SEED ?=
JOBS ?= $(shell nproc 2>/dev/null || echo 2)
export CMAKE_BUILD_PARALLEL_LEVEL ?= $(JOBS)

MODULE := CMakeLists.txt $(shell find external -type f)
CXX_FILES := $(shell find external fuzz benchmarks -name '*.[ch]pp')
# Without the caches of tools: what they write doesn't change what is installed.
LOCAL_EDITION := $(shell find toolkit -name '.*' -prune -o -type f -not -name '*.pyc' -print)

# Stamps: what has been done to the virtual environment, and when.
STAMPS := $(VENV)/.stamps
ENVIRONMENT := $(STAMPS)/environment
BUILT := $(STAMPS)/module $(STAMPS)/local-edition

.PHONY: help build demo test verify bench lint sanitize fuzz mutants coverage wheels lowest lock docs clean

help:  ## list the targets
	@sed -n 's/^\([a-z]*\):.*##  *\(.*\)/\1|\2/p' $(MAKEFILE_LIST) | \
	while IFS='|' read -r name text; do printf 'make %-9s %s\n' "$$name" "$$text"; done

build: $(BUILT)  ## leave .venv with the module and the local edition installed
	@echo "Ready: $(BIN)/python -c 'import sembra.external.dsettlement'"

test: $(BUILT) $(STAMPS)/test  ## run the whole test suite
	$(BIN)/python -m pytest --numprocesses=$(JOBS) --dist=worksteal $(TESTS)

verify: $(BUILT) $(STAMPS)/demo  ## hold the worker against published results, or those in CASES=folder
	$(BIN)/python -m verification $(CASES)

lint: $(BUILT) $(STAMPS)/lint $(STAMPS)/test $(STAMPS)/bench $(STAMPS)/docs $(STAMPS)/coverage  ## run formatters, linters, type checkers and the stub checker
	$(BIN)/python -m ruff format --check .
	$(BIN)/python -m ruff check .
	$(BIN)/python -m mypy
	$(BIN)/python scripts/make-stubs --check
	@mkdir -p build
	$(BIN)/python scripts/make-stubs --names >build/stub-only-names
	$(BIN)/python -m mypy.stubtest --allowlist build/stub-only-names sembra.external.dsettlement
	$(BIN)/basedpyright
	PATH="$(abspath $(BIN)):$$PATH" basedpyright --ignoreexternal \
	  --verifytypes sembra.external.dsettlement
	$(BIN)/clang-format --dry-run --Werror $(CXX_FILES)
	$(BIN)/cmake -S . -B build/lint -G Ninja -DCMAKE_MAKE_PROGRAM=$(abspath $(BIN)/ninja) \
	  -DPython_EXECUTABLE=$(abspath $(BIN)/python) -DCMAKE_BUILD_TYPE=Debug -DDSETTLEMENT_WERROR=ON \
	  -DCMAKE_CXX_CLANG_TIDY=$(abspath scripts/tidy)
	$(BIN)/cmake --build build/lint

demo: $(BUILT) $(STAMPS)/demo  ## tell the usage stories, with files and pictures in demo/
	$(BIN)/python -m examples.showcase demo

bench: $(BUILT) $(STAMPS)/bench  ## measure against the plain-Python equivalents, as ratios with their bounds
	$(BIN)/python -m benchmarks $(SUBJECTS)

fuzz: $(BUILT) $(STAMPS)/test  ## compare readers on FUZZ_TEXTS generated texts, fuzz the core for FUZZ_SECONDS
	$(BIN)/python -m fuzz.compare_readers --texts $(FUZZ_TEXTS) --seed "$(FUZZ_SEED)"
	FUZZ_SECONDS=$(FUZZ_SECONDS) scripts/fuzz-core

sanitize: $(BUILT) $(STAMPS)/test  ## run the tests under sanitizers and the interpreter's debugging allocator
	scripts/sanitize $(TESTS)

mutants: $(BUILT) $(STAMPS)/test  ## put small faults into the C++ code and tell which the tests miss
	$(BIN)/python -m mutants --jobs $(JOBS) $(MUTANTS)

coverage: $(BUILT) $(STAMPS)/test $(STAMPS)/coverage  ## count the lines and branches that the tests run, into docs/coverage.md
	scripts/coverage $(TESTS)

wheels: $(ENVIRONMENT) $(STAMPS)/release  ## build source distributions and wheels into dist/, and try them
	scripts/check-wheels

lowest: $(ENVIRONMENT) $(STAMPS)/lock  ## test the local edition with the lowest releases that it allows
	scripts/test-lowest

lock: $(STAMPS)/lock  ## write down the releases of today, which LOCKED=1 installs
	scripts/lock

docs: $(BUILT) $(STAMPS)/docs  ## build the documentation into site/
	$(BIN)/python -m sphinx --quiet --fail-on-warning --keep-going -d build/docs docs site
	@echo "Open site/index.html"

clean:  ## remove all that the other targets made
	rm -rf $(VENV) build demo dist site docs/examples fuzz-findings .hypothesis .mypy_cache .pytest_cache
	find . \( -name __pycache__ -o -name .ruff_cache \) -prune -exec rm -rf {} +

$(ENVIRONMENT): scripts/find-python
	@command -v c++ >/dev/null || command -v g++ >/dev/null || command -v clang++ >/dev/null || \
	  { echo "No C++ compiler was found; on Debian: apt-get install g++" >&2; exit 1; }
	@python=$$(PYTHON='$(PYTHON)' scripts/find-python) || exit 1; \
	if ! test -x $(BIN)/python; then \
	  echo "Making the virtual environment with $$python"; "$$python" -m venv $(VENV); \
	elif ! $(BIN)/python -c 'import sys; sys.exit(sys.version_info[:2] != (3, 12))'; then \
	  echo "$(VENV) is there already, and not of Python 3.12; remove it: make clean" >&2; exit 1; \
	fi
	@$(PIP) install --upgrade "pip>=25.1"
	@mkdir -p $(STAMPS)
	@touch $@

# A dependency group of pyproject.toml, installed.
$(STAMPS)/build $(STAMPS)/test $(STAMPS)/lint $(STAMPS)/demo $(STAMPS)/bench $(STAMPS)/docs $(STAMPS)/coverage $(STAMPS)/lock \
$(STAMPS)/release: \
$(STAMPS)/%: pyproject.toml $(if $(LOCKED),locks/%.txt) $(ENVIRONMENT)
	@echo "Installing what $* needs"
	@$(PIP) install $(if $(LOCKED),--requirement locks/$*.txt,--group $*)
	@touch $@

$(STAMPS)/module: $(MODULE) pyproject.toml | $(STAMPS)/build
	@echo "Building the module (a minute or two)"
	@$(PIP) install --no-build-isolation --no-deps .
	@touch $@

$(STAMPS)/local-edition: $(LOCAL_EDITION) | $(STAMPS)/build
	@echo "Installing the local edition"
	@$(PIP) install --no-build-isolation ./toolkit
	@touch $@
