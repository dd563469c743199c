#pragma once

#include "Examiner.h"
#include "KeyPresser.h"
#include "Messages.h"
#include "Options.h"
#include "Patient.h"
#include "ScoreFile.h"
#include "Screen.h"
#include "TaskTimer.h"

#include <QEventLoop>
#include <QObject>

#include <functional>
#include <memory>

class Kelmoran;
class Result;

/// Plays tests on the program's main window from the button to the row of scores.
class Rehearsal : public QObject
{
    Q_OBJECT

public:
    enum Code { Done = 0, BadArguments = 2, Refused = 3, NotFinished = 4 };

    struct Ending
    {
        Code code = Done;
        QString text; ///< one line that says why, unless all is done
    };

    /// Takes each row of scores, with its line end.
    using Printer = std::function<void(const QByteArray &row)>;

    /// The window must stand on the screen, and virtual time must run free.
    Rehearsal(const Options &options, Kelmoran &window, Printer print);

    /// Plays all tests. To be called once.
    Ending run();

private:
    void prepareReports(const Kelmoran &window);
    void beginTest();
    void finishTest();
    void reportIsMade(const QString &path, bool ok);
    void takeRow();
    void answerBox(const messages::Message &message);
    void end(Code code, const QString &text);

    const Options m_options;
    const Printer m_print;
    Screen m_screen;
    const std::unique_ptr<Patient> m_patient;
    Examiner m_examiner;
    KeyPresser m_keys;
    ScoreFile m_scores;
    messages::Handling m_boxes;
    TaskTimer m_breath;     ///< between two tests
    TaskTimer m_standstill; ///< nothing has changed on the screen for so long
    TaskTimer m_overlong;   ///< a test has gone on for so long

    int m_played = 0;
    bool m_leaving = false; ///< the test is over and its report is made
    QEventLoop m_loop;
    Ending m_ending;
};
