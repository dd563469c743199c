#include "Test1.h"

#include "Result.h"
#include "TaskTimer.h"
#include "patientsList.h"
#include "tables.h"

#include <QLoggingCategory>

#include <algorithm>

// The end of a trial and of a test: the row, the stop rules, the results and the report.

Q_DECLARE_LOGGING_CATEGORY(lcTest1)

namespace {
constexpr int over = 9999; // m_trialNo behind the last trial, whatever m_number says

/// A list of the staircase under its name, in which "%1" is the number of the subtask.
void trace(const char *name, int subtask, std::span<const short> values)
{
    if (!lcTest1().isDebugEnabled())
        return;
    QString line = QString::fromLatin1(name).arg(subtask + 1);
    for (const short value : values)
        line += QStringLiteral("%1").arg(value, 3);
    qCDebug(lcTest1, "%s", qPrintable(line));
}
} // namespace

void Test1::sequence6()
{
    m_timers[Rest]->stop();
    if (!m_markedError) {
        ++m_trialNo;
        trialState().track.advance();
    }
    if (m_phase == 0) {
        logTestTrial();
        if (isUnstable()) {
            for (const auto subtask : {Central, Peripheral, Dual})
                trace("tabS%1", subtask, m_state[subtask].track.track());
            breakOff(tr("Unstable measures, please start task over again"));
            return;
        }
        if (!m_markedError)
            analyseTrack();
    }
    if (m_trialNo >= std::min(m_number, over)) {
        nextBlock();
    } else if (!m_markedError) { // a struck trial waits for the assessor
        ++m_indexSubtask;
        sequence0();
    }
}

void Test1::logTestTrial()
{
    if (!hasFigures())
        m_figureAnswer.clear();
    if (!hasTriangles())
        m_positionAnswer.clear();
    rows::TrialT1 trial{trialState().track.position(),
                        m_time02,
                        m_figure,
                        m_figureAnswer,
                        m_position,
                        m_positionAnswer,
                        m_answerTime,
                        QStringLiteral("%1").arg(m_centralWrong + m_periphWrong),
                        m_limitReached};
    if (m_markedError) {
        trial.figureAnswer.clear();
        trial.positionAnswer.clear();
        trial.answer.clear();
        trial.answerTime = 0;
    }
    const rows::TrialHead head{m_taskCode, m_session, m_trialStamp, m_subtask + 1, m_trialNo};
    // A trial that the patient didn't answer in time belongs to the track, and is kept.
    logTrial(head, rows::trialT1(rows::identity(), head, trial, m_trialError), !m_markedError);
}

bool Test1::isUnstable() const
{
    const auto spent = [](const State &state) { return state.track.isSpent(); };
    if (m_modeAsked == 0)
        return std::ranges::all_of(m_state, spent);
    return spent(m_state[std::size_t(m_modeAsked - 1)]);
}

void Test1::analyseTrack()
{
    State &state = trialState();
    Staircase &track = state.track;
    const bool result = track.analyse();
    if (m_subtask == Peripheral)
        qCDebug(lcTest1, "testNumber %6d", track.position());
    trace("valS%1Max", m_subtask, track.peaks());
    trace("valS%1Min", m_subtask, track.troughs());
    if (track.isSettled()) {
        trace("**refS%1Max", m_subtask, track.peakGroup());
        trace("**refS%1Min", m_subtask, track.troughGroup());
    }
    if (!result)
        return;
    state.settled = true;
    qCDebug(lcTest1, "sup %8.3f inf %8.3f mean %8.3f %6d", track.score().sup, track.score().inf,
            track.score().mean, state.exposure);

    const bool all = std::ranges::all_of(m_state, [](const State &s) { return s.settled; });
    if (m_modeAsked != 0)
        takeResult(Subtask(m_subtask));
    else if (all)
        std::ranges::for_each(std::array{Central, Peripheral, Dual},
                              [this](Subtask subtask) { takeResult(subtask); });
    if (m_modeAsked != 0 || all)
        finishTest();
}

/// The threshold is cut to whole milliseconds.
void Test1::takeResult(Subtask subtask)
{
    m_state[subtask].exposure = int(m_state[subtask].track.score().mean);
}

void Test1::finishTest()
{
    qCDebug(lcTest1, "end test");
    m_trialsDone = m_trialNo;
    m_trialNo = over;
}

void Test1::nextBlock()
{
    endBlock();
    if (m_phase == 0)
        endTest();
    else if (m_mode == 1)
        t_sequence1();
    else if (m_mode == 2)
        t_sequence11();
    else if (m_mode == 3)
        t_sequence21();
}

resultFiles::Failures Test1::keepThresholds()
{
    QMap<int, int> thresholds;
    for (const auto subtask : {Central, Peripheral, Dual}) {
        const State &state = m_state[subtask];
        const bool unknown = m_withTraining && !state.hasThreshold;
        thresholds.insert(int(patientsList::ThresholdS1) + subtask, unknown ? 0 : state.exposure);
    }
    const QString error =
        patientsList::rewritePatientLine(m_calibration->isPatientName(), thresholds);
    if (error.isEmpty())
        return {};
    return {{QString::fromLatin1(patientsList::name), error}};
}

rows::GroupT1 Test1::scores(Subtask subtask) const
{
    const State &state = m_state[subtask];
    const Staircase::Score &score = state.track.score();
    return {state.exposure, state.errors, state.track.reversals(), score.sup,
            score.limitSup, score.inf,    score.limitInf};
}

QByteArray Test1::scoreRow()
{
    std::array<std::optional<rows::GroupT1>, subtasks> groups;
    for (const auto subtask : {Central, Peripheral, Dual}) {
        if (needs(subtask))
            groups[subtask] = scores(subtask);
    }
    return rows::scoresT1(rows::identity(),
                          {m_taskCode, m_session, m_startTime, m_duration, m_trialsDone}, groups);
}

void Test1::goResult(bool show)
{
    const rows::GroupT1 a = scores(Central);
    const rows::GroupT1 b = scores(Peripheral);
    const rows::GroupT1 c = scores(Dual);
    m_result->goResult1(show, m_startTime, m_session, m_duration, m_trialsDone, a.value, a.errors,
                        a.reversals, int(a.sup), a.limitSup, int(a.inf), a.limitInf, b.value,
                        b.errors, b.reversals, int(b.sup), b.limitSup, int(b.inf), b.limitInf,
                        c.value, c.errors, c.reversals, int(c.sup), c.limitSup, int(c.inf),
                        c.limitInf);
}
