#pragma once

#include "statistics.h"

#include <QWidget>

/// The numerical toolbox of a timed task: a handle on namespace statistics, where each operation is
/// told in full. It holds no data; one instance is as good as another.
class Statistic : public QWidget
{
    Q_OBJECT

public:
    explicit Statistic(QWidget *parent);

    double somme(const double *tab, int n) const;
    double moyenne(double sum, int n) const;
    void produitTab(const double *a, const double *b, double *out, int n) const;
    void ecart_a_moyenne(const double *in, double *out, double mean, int n) const;
    double pente(double sumXY, double meanX, double meanY, double sumDx2, int n) const;
    double ordonee(double meanX, double meanY, double slope) const;
    double corr(double sumDx2, double sumDy2, double slope) const;
    RegressionResult regression(const double *x, const double *y, int n) const;
    void difference(const double *a, const double *b, double *out, int n) const;
    void correction(const double *in, double *out, double slope, double n) const;
    void logLn(double *out, int n) const;
    double mediane(const double *tab, int n) const;
};
