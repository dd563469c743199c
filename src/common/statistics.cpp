#include "statistics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

namespace statistics {

namespace {

// Working space for one array. No block of a task has more than 100 trials, and a block's scores
// are reckoned without a visit to the heap; a longer array gets its own.
class Workspace
{
public:
    explicit Workspace(int n)
    {
        if (n > static_cast<int>(m_stack.size()))
            m_heap.resize(static_cast<std::size_t>(n));
    }

    double *data() { return m_heap.empty() ? m_stack.data() : m_heap.data(); }

private:
    std::array<double, 100> m_stack{};
    std::vector<double> m_heap;
};

double sumOfSquares(const double *tab, int n)
{
    Workspace squares(n);
    produitTab(tab, tab, squares.data(), n);
    return somme(squares.data(), n);
}

double sumOfProducts(const double *a, const double *b, int n)
{
    Workspace products(n);
    produitTab(a, b, products.data(), n);
    return somme(products.data(), n);
}

// A measure that is no number takes its place behind all others: a plain comparison would leave the
// sort without an order.
bool ranksBefore(double a, double b)
{
    return std::isnan(b) ? !std::isnan(a) : a < b;
}

double squaresAboutMean(const double *tab, double mean, int n)
{
    Workspace distances(n);
    ecart_a_moyenne(tab, distances.data(), mean, n);
    return sumOfSquares(distances.data(), n);
}

} // namespace

double somme(const double *tab, int n)
{
    double sum = 0.0;
    for (int i = 0; i < n; ++i)
        sum += tab[i];
    return sum;
}

double moyenne(double sum, int n)
{
    return sum / n;
}

void produitTab(const double *a, const double *b, double *out, int n)
{
    for (int i = 0; i < n; ++i)
        out[i] = a[i] * b[i];
}

void ecart_a_moyenne(const double *in, double *out, double mean, int n)
{
    for (int i = 0; i < n; ++i)
        out[i] = in[i] - mean;
}

double pente(double sumXY, double meanX, double meanY, double sumDx2, int n)
{
    return (sumXY - n * meanX * meanY) / sumDx2;
}

double ordonee(double meanX, double meanY, double slope)
{
    return meanY - slope * meanX;
}

double corr(double sumDx2, double sumDy2, double slope)
{
    return slope * slope * sumDx2 / sumDy2;
}

RegressionResult regression(const double *x, const double *y, int n)
{
    const double meanX = moyenne(somme(x, n), n);
    const double meanY = moyenne(somme(y, n), n);
    // A raw sum of products above, centred sums of squares below: earlier results were reckoned
    // with this mix, and new ones stay comparable with them to the last digit.
    const double sumXY = sumOfProducts(x, y, n);
    const double sumDx2 = squaresAboutMean(x, meanX, n);
    const double sumDy2 = squaresAboutMean(y, meanY, n);
    const double slope = pente(sumXY, meanX, meanY, sumDx2, n);
    return {slope, ordonee(meanX, meanY, slope), corr(sumDx2, sumDy2, slope)};
}

void difference(const double *a, const double *b, double *out, int n)
{
    for (int i = 0; i < n; ++i)
        out[i] = a[i] - b[i];
}

void correction(const double *in, double *out, double slope, double n)
{
    if (!(n > 0.0))
        return;
    double rank = 0.0;
    for (std::size_t i = 0; n > rank; ++i) {
        rank += 1.0;
        out[i] = (std::log(n) - std::log(rank)) * slope + in[i];
    }
}

void logLn(double *out, int n)
{
    for (int i = 0; i < n; ++i)
        out[i] = std::log(i + 1.0);
}

double mediane(const double *tab, int n)
{
    if (n < 1)
        return std::numeric_limits<double>::quiet_NaN();
    Workspace sorted(n);
    double *const a = sorted.data();
    std::copy_n(tab, n, a);
    std::sort(a, a + n, ranksBefore);
    if (n % 2 != 0)
        return a[n / 2];
    return (a[n / 2] + a[n / 2 - 1]) * 0.5;
}

} // namespace statistics
