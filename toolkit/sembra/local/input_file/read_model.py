"""An input file, read back into a model."""

from dataclasses import dataclass
from io import BytesIO
from os import PathLike
from typing import TYPE_CHECKING

from pydantic_core import to_json
from sembra.external.dsettlement import Metadata, Model1D, Model2D

from sembra.errors import ModelError
from sembra.local.input_file.build import Built, build, metadata_of
from sembra.local.input_file.compare import compare
from sembra.local.input_file.left_out import LeftOut
from sembra.local.service.document import RefusalError, read_document
from sembra.local.service.filling import fill
from sembra.local.sli.whole_file import InputFile

if TYPE_CHECKING:
    from sembra.external.dsettlement import Vertical


@dataclass(frozen=True)
class ReadModel:
    """What an input file tells, as far as a model can hold it.

    Args:
        model: The model.
        metadata: The identification block, without date and time.
        dissipation_calculation: The vertical for which the file asks for the dissipation, or None.
        left_out: What the file says and a model can't hold, in the order of the file. Where it is
            empty but for date and time, the model generates the file again.
    """

    model: Model1D | Model2D
    metadata: Metadata
    dissipation_calculation: "Vertical | None"
    left_out: tuple[LeftOut, ...]

    def generate_input_file(self) -> BytesIO:
        """Generate the input file of the model, with its metadata and its dissipation.

        Returns:
            The content in UTF-8, at its start.

        Raises:
            ModelError: The model was changed, and is not fit to be calculated any more.
            Exception: The template-filling service fails; its cause is the `InternalError`.
        """
        return self.model.generate_input_file(
            self.metadata, dissipation_calculation=self.dissipation_calculation
        )


def read_model(path: str | PathLike[str]) -> ReadModel:
    """Read an input file (.sli), or the input that a result file (.sld) repeats, into a model.

    Points, curves and lines are numbered as a model numbers them, and materials stand in its order;
    where a load begins or ends on a straight part of a line, the line gets a point. Nothing else
    changes without standing in `left_out`.

    Args:
        path: The file, in UTF-8 or in the code page that D-Settlement writes, cp1252.

    Returns:
        The model, what goes with it into its file, and what it can't hold.

    Raises:
        OSError: The file can't be read.
        InputFileError: The file is malformed; a ParsingError that names section and line.
        ModelError: No model can have the geometry, the drains or the options of the file.
    """
    file = InputFile.read(path)
    built = build(file)
    metadata = metadata_of(file)
    written = _write(built, metadata)
    told = {(one.section, one.line): one for one in built.left_out}
    differences = {(one.section, one.line): one for one in compare(file, written)}
    left_out = sorted((differences | told).values(), key=lambda one: one.line)
    return ReadModel(built.model, metadata, built.dissipation, tuple(left_out))


def _write(built: Built, metadata: Metadata) -> InputFile:
    """Return the file of the model, filled in here: no service is asked for it."""
    document = built.model._generate_input(metadata, built.dissipation)
    try:
        return InputFile(fill(read_document(to_json({"input": document}))))
    except RefusalError as error:
        raise ModelError(f"no file can be made of the model: {error}") from error
