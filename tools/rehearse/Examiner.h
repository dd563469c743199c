#pragma once

#include "Options.h"
#include "TaskTimer.h"

#include <QLatin1String>
#include <QObject>

class QComboBox;
class QWidget;
class Screen;
class TaskDialog;

/// A simulated assessor, who works through the dialogs as a person would: looks at the screen, does
/// the next thing that it asks for, and looks again when something new is to be seen.
class Examiner : public QObject
{
    Q_OBJECT

public:
    /// The window is the program's main window.
    Examiner(const Options &options, QWidget &window, const Screen &screen,
             QObject *parent = nullptr);

    /// From the main window into a test; `left` or one of the other signals tells how it ended.
    void playTest();

Q_SIGNALS:
    /// `pb_go` is about to be pressed.
    void blockBegins();
    /// The test has come to its end and was left by "Main Menu".
    void left();
    /// The task closed before its end; the text says how.
    void brokenOff(const QString &text);
    /// The program doesn't do what was asked; the text says what.
    void refused(const QString &text);

private:
    // Each looks for one thing to do, does it and returns true; false if it isn't to be done.
    bool leadTask();
    bool calibrate();
    bool fillInPatient();
    bool setFrequency();
    bool openPreferences();
    bool choosePatient();
    bool setCheckBoxes();
    bool pressTest();

    void look();
    void lookIn(int ms);
    void onAppeared(const QWidget *widget);
    void onVanished(QWidget *widget);
    void pressGo(QWidget *go);
    void registerPatient(const QComboBox *list);
    /// The test button was pressed, and no task is on the screen.
    void giveUp();
    QLatin1String testButton() const;
    QString buttonText() const;

    const Options m_options;
    QWidget &m_window;
    TaskTimer m_look;

    bool m_playing = false;    ///< a test is to be played, or is
    bool m_pressed = false;    ///< the test button has been pressed
    bool m_started = false;    ///< a task has taken the screen since
    bool m_leaving = false;    ///< "Main Menu" has been pressed
    bool m_registered = false; ///< the dialog of the patient has been filled in
    bool m_frequencySet = false;
    bool m_numberTyped = false;
};
