// What the program's pieces cost: the statistics, a draw, a row, the paint of each stimulus.

#include "AttentionScores.h"
#include "DrawArrow.h"
#include "DrawArrowPeriph.h"
#include "DrawBorder.h"
#include "DrawCircle.h"
#include "DrawCross.h"
#include "DrawCrossDot.h"
#include "DrawCrossThick.h"
#include "DrawGrayRectangle.h"
#include "DrawLineH.h"
#include "DrawLineSh.h"
#include "DrawLineV.h"
#include "DrawRectangle.h"
#include "DrawRoundedRectangle.h"
#include "DrawTriangleLeft.h"
#include "DrawTriangleRight.h"
#include "randomness.h"
#include "rows.h"
#include "statistics.h"

#include <QApplication>
#include <QImage>

#include <benchmark/benchmark.h>

namespace {

void regression(benchmark::State &state)
{
    std::vector<double> x(static_cast<std::size_t>(state.range(0)));
    std::vector<double> y(x.size());
    statistics::logLn(x.data(), int(x.size()));
    for (std::size_t i = 0; i < y.size(); ++i)
        y[i] = 350.0 - 25.0 * x[i] + double(i * 37 % 41);
    for (auto _ : state)
        benchmark::DoNotOptimize(statistics::regression(x.data(), y.data(), int(x.size())));
}
BENCHMARK(regression)->Arg(20)->Arg(40)->Arg(1000);

void attentionScores(benchmark::State &state)
{
    AttentionScores table;
    for (int condition = 0; condition < AttentionScores::conditions; ++condition) {
        for (int rank = 1; rank <= AttentionScores::ranks; ++rank)
            table.store(condition, rank, 250.0 + rank * 37 % 41);
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(table.compute({1, 2, 3}, 102));
}
BENCHMARK(attentionScores);

void draw(benchmark::State &state)
{
    quint32 seed = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(randomness::shuffled(int(state.range(0)), ++seed));
}
BENCHMARK(draw)->Arg(3)->Arg(8)->Arg(12);

void trialRow(benchmark::State &state)
{
    const rows::Identity who{QStringLiteral("A"), QStringLiteral("Mrs."), QStringLiteral("Doe"),
                             QStringLiteral("Jane"), QDate(1950, 2, 1)};
    const QDateTime stamp(QDate(2025, 1, 6), QTime(9, 0, 0, 123), Qt::UTC);
    for (auto _ : state)
        benchmark::DoNotOptimize(rows::trialT2(
            who, {2, 3, stamp, 1, 17}, {6, QStringLiteral("287"), QStringLiteral("NE")}, 0));
}
BENCHMARK(trialRow);

template <typename Stimulus>
void paint(benchmark::State &state)
{
    Stimulus stimulus(nullptr);
    stimulus.resize(int(state.range(0)), int(state.range(0)));
    QImage picture(stimulus.size(), QImage::Format_RGB32);
    for (auto _ : state)
        stimulus.render(&picture, {}, {}, QWidget::DrawChildren);
}
BENCHMARK(paint<DrawCross>)->Arg(40);
BENCHMARK(paint<DrawCrossThick>)->Arg(40);
BENCHMARK(paint<DrawCrossDot>)->Arg(40);
BENCHMARK(paint<DrawRectangle>)->Arg(42);
BENCHMARK(paint<DrawGrayRectangle>)->Arg(20);
BENCHMARK(paint<DrawBorder>)->Arg(60);
BENCHMARK(paint<DrawCircle>)->Arg(60);
BENCHMARK(paint<DrawRoundedRectangle>)->Arg(60);
BENCHMARK(paint<DrawLineH>)->Arg(48);
BENCHMARK(paint<DrawLineV>)->Arg(48);
BENCHMARK(paint<DrawLineSh>)->Arg(720);
BENCHMARK(paint<DrawArrow>)->Arg(100);
BENCHMARK(paint<DrawArrowPeriph>)->Arg(100);
BENCHMARK(paint<DrawTriangleLeft>)->Arg(80);
BENCHMARK(paint<DrawTriangleRight>)->Arg(80);

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
