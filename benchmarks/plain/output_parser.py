"""The reader of result files as plain Python: the twelve patterns, `split`, `float` and `int`.

It is what an application would write by hand. The tests use it as the oracle of the native
reader (the same value, or an exception of the same type and text, for every text), and the
benchmarks as the baseline. So it is kept plain: every step stands in the order in which the
native reader has to appear to take it, and nothing here is tuned.
"""

import re
from io import StringIO
from typing import Any

from sembra.errors import ParsingError


class OutputFileParser:
    """Helper class to extract results from a D-Settlement output file (.sld)."""

    _FILE_NAME_PATTERN = re.compile(r"FILENAME\s+: (?P<path>.*)(?:\r\n|\n|\r)")
    _RESULTS_PATTERN = re.compile(
        r"\[Results\](?:\r\n|\n|\r)(?P<results>.*?)(?:\r\n|\n|\r)\[End of Results\]",
        flags=re.DOTALL,
    )
    _VERTICAL_PATTERN = re.compile(
        r"\[Vertical\](?:\r\n|\n|\r)(?P<results>.*?)(?:\r\n|\n|\r)\[End of Vertical\]",
        flags=re.DOTALL,
    )
    _COORDINATE_PATTERN = re.compile(r"(?P<coordinate>.*?)\s+=\s+ (?P<axes>[X|Z])\sco-ordinate")
    _TIME_SETTLEMENT_PER_LOAD_PATTERN = re.compile(
        r"\[Time-Settlement per Load\](?:\r\n|\n|\r)"
        r"\s*(?P<time_step_count>\d+)\s+=\s+Time\sstep\scount\s*(?:\r\n|\n|\r)"
        r"\s*(?P<load_step_count>\d+)\s+=\s+Load\sstep\scount\s*(?:\r\n|\n|\r)"
        r"(?P<data>.*?)(?:\r\n|\n|\r)\[End of Time-Settlement per Load\]",
        flags=re.DOTALL,
    )
    _DEPTHS_PATTERN = re.compile(
        r"\[Depths\](?:\r\n|\n|\r)(?P<data>.*?)(?:\r\n|\n|\r)\[End of Depths\](?:\r\n|\n|\r)",
        flags=re.DOTALL,
    )
    _LEAKAGES_PATTERN = re.compile(
        r"\[Leakages\](?:\r\n|\n|\r)(?P<data>.*?)(?:\r\n|\n|\r)"
        r"\[End of Leakages\](?:\r\n|\n|\r)",
        flags=re.DOTALL,
    )
    _DRAINED_LAYERS_PATTERN = re.compile(
        r"\[Drained Layers\](?:\r\n|\n|\r)(?P<data>.*?)(?:\r\n|\n|\r)"
        r"\[End of Drained Layers\](?:\r\n|\n|\r)",
        flags=re.DOTALL,
    )
    _STRESSES_PATTERN = re.compile(
        r"\[Stresses\](?:\r\n|\n|\r)\[Column Indication\](?:\r\n|\n|\r)"
        r"(?P<headers>.*?)(?:\r\n|\n|\r)\[End of Column Indication\](?:\r\n|\n|\r)"
        r"\[Stress Data\](?:\r\n|\n|\r)\s*[0-9]+\s+=\s+Depth step count(?:\r\n|\n|\r)"
        r"(?P<data>.*?)(?:\r\n|\n|\r)\[End of Stress Data\](?:\r\n|\n|\r)\[End of Stresses\]",
        flags=re.DOTALL,
    )
    _TIME_DEPENDENT_DATA_PATTERN = re.compile(
        r"\[Time-dependent Data\](?:\r\n|\n|\r)\[Column Indication\](?:\r\n|\n|\r)"
        r"(?P<headers>.*?)(?:\r\n|\n|\r)\[End of Column Indication\](?:\r\n|\n|\r)"
        r"(?P<data>.*?)(?:\r\n|\n|\r)\[End of Time dependent Data\]",
        flags=re.DOTALL,
    )
    _VERTICAL_DATA_AT_TIME = re.compile(
        r"\[Vertical Data at Time\](?:\r\n|\n|\r)"
        r"\s*(?P<time>\d+\.\d+)\s+=\s+Time\sin\sdays(?:\r\n|\n|\r)"
        r"(?P<data>.*?)(?:\r\n|\n|\r)\[End of Vertical Data at Time\]",
        flags=re.DOTALL,
    )
    _RESIDUAL_SETTLEMENTS_PATTERN = re.compile(
        r"\[RESIDUAL SETTLEMENTS\](?:\r\n|\n|\r)\[Column Indication\](?:\r\n|\n|\r)"
        r"(?P<headers>.*?)(?:\r\n|\n|\r)\[End of Column Indication\](?:\r\n|\n|\r)"
        r"\[DATA COUNT\](?:\r\n|\n|\r).*?(?:\r\n|\n|\r)\[END OF DATA COUNT\](?:\r\n|\n|\r)"
        r"\[RESIDUAL SETTLEMENT DATA\](?:\r\n|\n|\r)"
        r"(?P<data>.*?)(?:\r\n|\n|\r)\[END OF RESIDUAL SETTLEMENT DATA\]",
        flags=re.DOTALL,
    )

    def __init__(self, sld_file: StringIO) -> None:
        """Cut the `[Results]` block out of the file.

        Args:
            sld_file: The finished analysis; any object whose `getvalue` gives the text will do.

        Raises:
            ParsingError: The text has no `[Results]` block.
        """
        self._results = self._parse_results(sld_file.getvalue())

    @property
    def raw_results(self) -> str:
        """The `[Results]` block as text, tags included."""
        return self._results

    @property
    def vertical_results(self) -> dict[int, dict[str, Any]]:
        """The results of all verticals, by number from 1."""
        return self._parse_verticals(self._results)

    @property
    def residual_times(self) -> dict[int, dict[str, list[float]]]:
        """The residual settlements: vertical number, then header, then one value per row."""
        return self._parse_residual_settlements(self._results)

    @classmethod
    def _parse_results(cls, sld_file: str) -> str:
        results_search = cls._RESULTS_PATTERN.search(sld_file)
        if results_search:
            return results_search.group()
        file_name_search = cls._FILE_NAME_PATTERN.search(sld_file)
        file_name = "sld-file"
        if file_name_search:
            file_name = file_name_search.group("path").split("\\")[-1]
        raise ParsingError(f"{file_name} contains no [Results]")

    @classmethod
    def _parse_verticals(cls, results: str) -> dict[int, dict[str, Any]]:
        verticals = {}
        for number, vertical in enumerate(cls._VERTICAL_PATTERN.finditer(results), start=1):
            verticals[number] = cls._parse_vertical(vertical.group())
        return verticals

    @classmethod
    def _parse_vertical(cls, vertical: str) -> dict[str, Any]:
        coordinates = {}
        for coordinate in cls._COORDINATE_PATTERN.finditer(vertical):
            coordinates[coordinate.group("axes").lower()] = float(coordinate.group("coordinate"))

        depths_search = cls._DEPTHS_PATTERN.search(vertical)
        depths = depths_search.group("data").splitlines()[1:] if depths_search else []

        leakage_search = cls._LEAKAGES_PATTERN.search(vertical)
        leakages = leakage_search.group("data").splitlines()[1:] if leakage_search else []

        drained_layers_search = cls._DRAINED_LAYERS_PATTERN.search(vertical)
        drained_layers = (
            drained_layers_search.group("data").splitlines()[1:] if drained_layers_search else []
        )

        stresses_search = cls._STRESSES_PATTERN.search(vertical)
        headers: list[str] = []
        stresses_data: list[str] = []
        if stresses_search:
            headers = stresses_search.group("headers").splitlines()
            stresses_data = stresses_search.group("data").splitlines()
        stresses = {}
        for i, header in enumerate(headers):
            stresses[header] = [float(row.split()[i]) for row in stresses_data]

        time_settlement_per_load = cls._parse_time_settlement_per_load(vertical)
        vertical_data = cls._parse_time_dependent_data(vertical)

        return {
            "coordinates": coordinates,
            "depths": [float(line) for line in depths],
            "leakages": [float(line) for line in leakages],
            "drained_layers": [float(line) for line in drained_layers],
            "stresses": stresses,
            "time_settlement_per_load": time_settlement_per_load,
            "vertical_data": vertical_data,
        }

    @classmethod
    def _parse_time_settlement_per_load(cls, vertical: str) -> dict[str, Any]:
        search = cls._TIME_SETTLEMENT_PER_LOAD_PATTERN.search(vertical)
        if not search:
            return {}
        load_step_count = int(search.group("load_step_count"))
        time_step_count = int(search.group("time_step_count"))
        rows = search.group("data").splitlines()
        values = [[float(field) for field in row.split()] for row in rows]
        load_lists = list(zip(*values, strict=False))
        result: dict[str, Any] = {
            "load_step_count": load_step_count,
            "time_step_count": time_step_count,
            "time": list(load_lists[0]),
        }
        for i, load_list in enumerate(load_lists[1:], start=1):
            result[f"load_{i}"] = list(load_list)
        return result

    @classmethod
    def _parse_time_dependent_data(cls, vertical: str) -> dict[float, dict[str, list[float]]]:
        search = cls._TIME_DEPENDENT_DATA_PATTERN.search(vertical)
        headers = search.group("headers").splitlines() if search else []
        time_dependent_data = search.group("data") if search else ""
        vertical_data = {}
        for vertical_ in cls._VERTICAL_DATA_AT_TIME.finditer(time_dependent_data):
            time = float(vertical_.group("time"))
            time_data: dict[str, list[float]] = {}
            vertical_data[time] = time_data
            for i, header in enumerate(headers):
                time_data[header] = [
                    float(row.split()[i]) for row in vertical_.group("data").splitlines()
                ]
        return vertical_data

    @classmethod
    def _parse_residual_settlements(cls, results: str) -> dict[int, dict[str, list[float]]]:
        search = cls._RESIDUAL_SETTLEMENTS_PATTERN.search(results)
        headers = search.group("headers").splitlines()[1:] if search else []
        residual_settlements = search.group("data").splitlines() if search else []
        residuals: dict[int, dict[str, list[float]]] = {}
        for row in residual_settlements:
            values = row.split()
            vertical_data = residuals.setdefault(int(values[0]), {})
            for i, header in enumerate(headers, start=1):
                vertical_data.setdefault(header, []).append(float(values[i]))
        return residuals
