"""Signal processing over NumPy arrays: by operation, the types of the arrays choose the C function. Functions that SciPy has too carry SciPy's names and arguments.

    elementwise    arithmetic, elementary functions, logic, thresholds, polar form, conversion
    reductions     sums, means, norms, extremes, dot products
    transforms     FFT of any length, cosine transform, analytic signal, short-time spectra
    filters        FIR, IIR, sparse and adaptive filters of streams; lfilter, sosfilt, upfirdn
    convolution    convolution, correlation, resampling, medians
    search         sorting, the nearest entries of tables
    design         firwin, butter, cheby1, responses
    windows, generators, telephony, coding, wavelets

dask, which needs Dask and is imported by itself, has the long ones over Dask arrays and folders of recordings. raw has every C function under its own name.
"""

from . import raw
from ._core import Error, Warning, complex_int8, complex_int16, complex_int32, complex_int64
from .coding import *
from .convolution import *
from .design import *
from .elementwise import *
from .filters import *
from .generators import *
from .reductions import *
from .search import *
from .telephony import *
from .transforms import *
from .wavelets import *
from .windows import *


def set_threads(n: int) -> None:
    """How many threads a long call may share its work out to; records keep the number they were built with."""
    raw.tevSetNumThreads(n)


def get_threads() -> int:
    """How many threads a long call may share its work out to."""
    return raw.tevGetNumThreads()


__version__: str = raw.tevsGetLibVersion()["version"]
