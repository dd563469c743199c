#include "Statistic.h"

Statistic::Statistic(QWidget *parent)
    : QWidget(parent)
{
    hide(); // it shows nothing, and must not catch a click of the patient
}

double Statistic::somme(const double *tab, int n) const
{
    return statistics::somme(tab, n);
}

double Statistic::moyenne(double sum, int n) const
{
    return statistics::moyenne(sum, n);
}

void Statistic::produitTab(const double *a, const double *b, double *out, int n) const
{
    statistics::produitTab(a, b, out, n);
}

void Statistic::ecart_a_moyenne(const double *in, double *out, double mean, int n) const
{
    statistics::ecart_a_moyenne(in, out, mean, n);
}

double Statistic::pente(double sumXY, double meanX, double meanY, double sumDx2, int n) const
{
    return statistics::pente(sumXY, meanX, meanY, sumDx2, n);
}

double Statistic::ordonee(double meanX, double meanY, double slope) const
{
    return statistics::ordonee(meanX, meanY, slope);
}

double Statistic::corr(double sumDx2, double sumDy2, double slope) const
{
    return statistics::corr(sumDx2, sumDy2, slope);
}

RegressionResult Statistic::regression(const double *x, const double *y, int n) const
{
    return statistics::regression(x, y, n);
}

void Statistic::difference(const double *a, const double *b, double *out, int n) const
{
    statistics::difference(a, b, out, n);
}

void Statistic::correction(const double *in, double *out, double slope, double n) const
{
    statistics::correction(in, out, slope, n);
}

void Statistic::logLn(double *out, int n) const
{
    statistics::logLn(out, n);
}

double Statistic::mediane(const double *tab, int n) const
{
    return statistics::mediane(tab, n);
}
