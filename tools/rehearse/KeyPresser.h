#pragma once

#include "KeyScript.h"

#include <QObject>
#include <QSet>

class Patient;
class TaskDialog;

/// Carries out a script of keys: counts the trials of the block and watches their stages.
class KeyPresser : public QObject
{
    Q_OBJECT

public:
    KeyPresser(const KeyScript &script, Patient &patient, QObject *parent = nullptr);

    /// The trials of this task are counted.
    void watch(const TaskDialog *task);
    /// `pb_go` is about to be pressed: the count starts anew.
    void beginBlock();

private:
    void enter(int stage);
    void carryOut(const KeyScript::Line &line);

    const KeyScript m_script;
    Patient &m_patient;
    int m_trial = 0;
    QSet<qsizetype> m_done; ///< lines of the script that were carried out in this block
};
