#include "RefreshGrid.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr double nanosecondsPerMillisecond = 1e6;
constexpr std::size_t reportsKept = 32;
constexpr double moreThanAMode = 0.005;   ///< of the period: crystals are a hundred times better
constexpr double moreThanAReport = 0.3e6; ///< ns from the grid
constexpr double enoughToMeasure = 2e9;   ///< ns, from the first report to the last
} // namespace

RefreshGrid::RefreshGrid(qint64 refresh, double period)
    : m_refresh(refresh)
    , m_period(period)
{
}

qint64 RefreshGrid::nextAfter(qint64 moment) const
{
    const double passed = std::floor(double(moment - m_refresh) / m_period);
    const qint64 next = m_refresh + std::llround((passed + 1) * m_period);
    // A moment on the grid, or rounded to it, is followed by the next one.
    return next > moment ? next : m_refresh + std::llround((passed + 2) * m_period);
}

int RefreshGrid::refreshes(int ms) const
{
    if (ms <= 0)
        return 0;
    return std::max(1, int(std::lround(ms * nanosecondsPerMillisecond / m_period)));
}

qint64 RefreshGrid::drawAfter(qint64 shown, int ms) const
{
    constexpr double half = 0.5;
    return shown + std::llround((refreshes(ms) - half) * m_period);
}

void RefreshReports::begin(double modePeriod)
{
    m_modePeriod = modePeriod;
    m_reports.clear();
}

void RefreshReports::note(quint64 number, qint64 moment)
{
    // The count goes back where the screen has been switched off.
    if (!m_reports.empty() && number < m_reports.back().number)
        m_reports.clear();
    if (!m_reports.empty() && number == m_reports.back().number)
        m_reports.pop_back();
    m_reports.push_back({number, moment});
    if (m_reports.size() > reportsKept)
        m_reports.pop_front();
}

std::optional<RefreshGrid> RefreshReports::grid() const
{
    if (m_modePeriod <= 0 || m_reports.size() < 2)
        return std::nullopt;
    const Report &first = m_reports.front();
    const Report &last = m_reports.back();
    const double measured = double(last.moment - first.moment) / double(last.number - first.number);
    if (std::abs(measured - m_modePeriod) > moreThanAMode * m_modePeriod)
        return std::nullopt;
    const bool isLong = double(last.moment - first.moment) >= enoughToMeasure;
    const double period = isLong ? measured : m_modePeriod;
    const auto isOff = [&](const Report &report) {
        const double expected = double(last.number - report.number) * period;
        return std::abs(double(last.moment - report.moment) - expected) > moreThanAReport;
    };
    if (std::ranges::any_of(m_reports, isOff))
        return std::nullopt;
    return RefreshGrid(last.moment, period);
}
