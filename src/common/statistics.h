#pragma once

/// The line of a least-squares fit, and how well it fits.
struct RegressionResult
{
    double slope;     ///< slope of y on x
    double intercept; ///< y at x = 0
    double r2;        ///< coefficient of determination, 0 to 1
};

/// The numbers behind the scores of the timed tasks.
///
/// Performance drifts with practice along the logarithm of the trial's rank (Newell A, Rosenbloom
/// PS (1981). Mechanisms of skill acquisition and the law of practice. In Anderson JR (ed),
/// Cognitive Skills and Their Acquisition, 1-55. Erlbaum). A least-squares line of the measures
/// against ln(rank), from logLn() and regression(), gives that drift; correction() takes it out of
/// each trial before the measures are averaged.
///
/// Arrays are the caller's, hold at least the count that goes with them, and may not overlap unless
/// they are the same. No function reports an error: a zero denominator flows through as infinity or
/// not-a-number, and is seen as such in the result files. The order of the operations on doubles is
/// part of the result and is kept.
namespace statistics {

/// The sum of the first n values, from the left; 0.0 for n below 1.
[[nodiscard]] double somme(const double *tab, int n);

/// The mean from the sum and the count; infinite or not a number for n = 0.
[[nodiscard]] double moyenne(double sum, int n);

/// out[i] = a[i] * b[i]; nothing for n below 1.
void produitTab(const double *a, const double *b, double *out, int n);

/// out[i] = in[i] - mean; nothing for n below 1.
void ecart_a_moyenne(const double *in, double *out, double mean, int n);

/// The slope of y on x.
/// @param sumXY sum of the products, not centred
/// @param sumDx2 sum of the squared distances of x from its mean; 0 gives infinity or not-a-number
[[nodiscard]] double pente(double sumXY, double meanX, double meanY, double sumDx2, int n);

/// The height of the line at x = 0.
[[nodiscard]] double ordonee(double meanX, double meanY, double slope);

/// The ratio of the explained to the total sum of squares: r2, without the sign of the slope, and
/// not the correlation coefficient that the name suggests.
[[nodiscard]] double corr(double sumDx2, double sumDy2, double slope);

/// The least-squares line through n points, for any n. A constant x divides by zero in the slope, a
/// constant y in r2; for n below 1 nothing is a number. Up to 100 points need no memory from the
/// heap.
[[nodiscard]] RegressionResult regression(const double *x, const double *y, int n);

/// out[i] = a[i] - b[i]; nothing for n below 1.
void difference(const double *a, const double *b, double *out, int n);

/// Brings every value to where the practice line would have it at the last trial: with r = i + 1,
/// out[i] = (ln(n) - ln(r)) * slope + in[i].
/// @param slope of the measures on ln(rank)
/// @param n count of trials. A whole n writes exactly n values, of which the last is unchanged; any
/// other n, which must be finite, is rounded up, and its last value moves the other way. Nothing
/// for n not above 0.
void correction(const double *in, double *out, double slope, double n);

/// The x-axis of the practice line: out[i] = ln(i + 1), natural; nothing for n below 1.
void logLn(double *out, int n);

/// The median of n values, for any n; the mean of the middle two for an even n, not a number for n
/// below 1. What is no number ranks last. The array stays as it is. Up to 100 values need no memory
/// from the heap.
[[nodiscard]] double mediane(const double *tab, int n);

} // namespace statistics
