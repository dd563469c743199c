#include "KeyPresser.h"

#include "Patient.h"
#include "TaskDialog.h"
#include "TaskTimer.h"
#include "hands.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcRehearse, "kelmoran.rehearse", QtCriticalMsg)

namespace {
void pressFor(KeyScript::Action action)
{
    switch (action) {
    case KeyScript::Action::Pause:
        hands::press(Qt::Key_P, QStringLiteral("p"));
        break;
    case KeyScript::Action::Error:
        hands::press(Qt::Key_E, QStringLiteral("e"));
        break;
    case KeyScript::Action::Guides:
        hands::press(Qt::Key_S, QStringLiteral("s"));
        break;
    default:
        hands::press(Qt::Key_Escape);
    }
}
} // namespace

KeyPresser::KeyPresser(const KeyScript &script, Patient &patient, QObject *parent)
    : QObject(parent)
    , m_script(script)
    , m_patient(patient)
{
}

void KeyPresser::watch(const TaskDialog *task)
{
    connect(task, &TaskDialog::stageEntered, this, &KeyPresser::enter);
}

void KeyPresser::beginBlock()
{
    m_trial = 0;
    m_done.clear();
}

void KeyPresser::enter(int stage)
{
    if (stage == 1) {
        ++m_trial;
        qCDebug(lcRehearse, "trial %d", m_trial);
    }
    const int trial = stage == 0 ? m_trial + 1 : m_trial; // the wait is that for the next one
    for (qsizetype i = 0; i < m_script.lines.size(); ++i) {
        const KeyScript::Line &line = m_script.lines.at(i);
        // A run of crosses enters the same stages over and over.
        if (line.trial == trial && line.stage == stage && !m_done.contains(i)) {
            m_done.insert(i);
            carryOut(line);
        }
    }
}

void KeyPresser::carryOut(const KeyScript::Line &line)
{
    if (line.action == KeyScript::Action::Early || line.action == KeyScript::Action::Late) {
        m_patient.answerIn(line.ms);
        return;
    }
    auto *press = new TaskTimer(this);
    press->setSingleShot(true);
    connect(press, &TaskTimer::timeout, this, [press, action = line.action] {
        press->deleteLater();
        pressFor(action);
    });
    press->start(line.ms);
}
