"""What there is to say about a set of errors."""

from __future__ import annotations

import statistics
from dataclasses import dataclass
from typing import Sequence


def percentile(values: Sequence[float], percent: int) -> float:
    """The smallest value that so many percent don't exceed."""
    ordered = sorted(values)
    return ordered[max(-(-len(ordered) * percent // 100), 1) - 1]


@dataclass(frozen=True)
class Spread:
    """Median, mean and standard deviation keep the sign of the errors; the percentiles and the worst
    are of their size."""
    count: int
    median: float
    mean: float
    deviation: float
    p95: float
    p99: float
    worst: float

    @classmethod
    def of(cls, errors: Sequence[float]) -> Spread:
        if not errors:
            raise ValueError("a spread of nothing")
        sizes = [abs(error) for error in errors]
        return cls(len(errors), statistics.median(errors), statistics.fmean(errors),
                   statistics.stdev(errors) if len(errors) > 1 else 0.0,
                   percentile(sizes, 95), percentile(sizes, 99), max(sizes))
