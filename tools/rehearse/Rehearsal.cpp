#include "Rehearsal.h"

#include "Kelmoran.h"
#include "Result.h"
#include "TaskDialog.h"

#include <utility>

namespace {
constexpr int standstill = 30 * 60 * 1000;    // ms
constexpr int breath = 1000;                  // ms between two tests
constexpr int overlong = 23 * 60 * 60 * 1000; // ms: a day is more than a test can tell
} // namespace

Rehearsal::Rehearsal(const Options &options, Kelmoran &window, Printer print)
    : m_options(options)
    , m_print(std::move(print))
    , m_patient(Patient::forTask(options, m_screen))
    , m_examiner(options, window, m_screen)
    , m_keys(options.keys, *m_patient)
    , m_scores(options.task)
    , m_boxes([this](QWidget *, const messages::Message &message) { answerBox(message); })
{
    for (const TaskDialog *task : window.findChildren<TaskDialog *>())
        m_keys.watch(task);
    prepareReports(window);

    connect(&m_examiner, &Examiner::blockBegins, &m_keys, &KeyPresser::beginBlock);
    connect(&m_examiner, &Examiner::left, this, &Rehearsal::finishTest);
    connect(&m_examiner, &Examiner::brokenOff, this,
            [this](const QString &text) { end(NotFinished, text); });
    connect(&m_examiner, &Examiner::refused, this,
            [this](const QString &text) { end(Refused, text); });

    m_breath.setSingleShot(true);
    connect(&m_breath, &TaskTimer::timeout, this, &Rehearsal::takeRow);
    m_standstill.setSingleShot(true);
    m_overlong.setSingleShot(true);
    const auto stir = [this] { m_standstill.start(standstill); };
    connect(&m_screen, &Screen::appeared, this, stir);
    connect(&m_screen, &Screen::vanished, this, stir);
    connect(&m_standstill, &TaskTimer::timeout, this,
            [this] { end(NotFinished, QStringLiteral("The test came to a standstill.")); });
    connect(&m_overlong, &TaskTimer::timeout, this,
            [this] { end(NotFinished, QStringLiteral("The test did not end within 23 hours.")); });
}

void Rehearsal::prepareReports(const Kelmoran &window)
{
    for (const TaskDialog *task : window.findChildren<TaskDialog *>()) {
        task->result().setPrinting(m_options.report);
        connect(&task->result(), &Result::pdfFinished, this, &Rehearsal::reportIsMade);
    }
}

Rehearsal::Ending Rehearsal::run()
{
    beginTest();
    m_loop.exec();
    return m_ending;
}

void Rehearsal::beginTest()
{
    m_leaving = false;
    m_standstill.start(standstill);
    m_overlong.start(overlong);
    m_scores.mark();
    m_examiner.playTest();
}

void Rehearsal::finishTest()
{
    m_leaving = true;
    m_overlong.stop();
    if (!m_options.report) // the task still fills in the report that nobody wants
        m_breath.start(breath);
}

void Rehearsal::reportIsMade(const QString &path, bool ok)
{
    if (ok)
        m_breath.start(breath);
    else
        end(Refused, QStringLiteral("%1 could not be made.").arg(path));
}

void Rehearsal::takeRow()
{
    const QByteArray row = m_scores.newRow();
    if (row.isEmpty()) {
        end(NotFinished, QStringLiteral("The test left no row of scores."));
        return;
    }
    m_print(row);
    if (++m_played == m_options.repeat)
        end(Done, {});
    else
        beginTest();
}

void Rehearsal::answerBox(const messages::Message &message)
{
    // A report that nobody asked for may lack its template.
    if (m_leaving && !m_options.report)
        return;
    end(Refused, QStringLiteral("%1: %2").arg(message.title, message.text).simplified());
}

void Rehearsal::end(Code code, const QString &text)
{
    if (m_loop.isRunning() && m_ending.code == Done)
        m_ending = {code, text};
    m_loop.quit();
}
