#pragma once

#include "Devices.h"
#include "Program.h"
#include "Rules.h"

#include <QMap>

#include <memory>

class Luck;
class QAbstractButton;
class QLineEdit;

/// A random assessor and a random patient in one. At times they do what the screen asks for, so
/// that tests come to their end; at times anything at all.
class Player
{
public:
    /// @param fail takes what isn't as it must be, and doesn't return
    Player(Luck &luck, Program::Fail fail);
    ~Player();

    /// Plays until so many events have been made.
    void play(int events);
    /// The figures, a line each.
    QString summary() const;
    /// What must have come about in a few thousand events; empty if it has.
    QString missing() const;

private:
    enum class Mood { Helpful, Nervous, Wild };

    void beginRoot();
    void step();
    void checkEscape();

    // What can be done; each is a few events.
    void help();
    void helpInTask(QWidget *task);
    void helpAtDesk();
    void begin(QWidget *task, QAbstractButton *go);
    void answer(QWidget *task);
    void fillCalibration(QWidget *dialog);
    void fillPatient(QWidget *dialog);
    void fillAssessor(QWidget *dialog);
    void fillPreferences(QWidget *dialog);
    void choosePatient();
    void tickBoxes();
    void startTest();
    void trigger(const char *action);
    void anyEntry();
    void anyKey();
    void holdKey(const devices::Key &key);
    void anyMouse();
    void anyEdit();
    void anyClose();
    void anyWindow();

    // By the devices. Each counts as an event.
    void press(const devices::Key &key);
    void release(const devices::Key &key);
    void strike(const devices::Key &key);
    void strike(int key, const QString &text = {});
    void type(QLineEdit *edit, const QString &text);
    void click(QWidget *widget, Qt::MouseButton button = Qt::LeftButton);
    void clickAt(QWidget *window, const QPoint &at, Qt::MouseButton button);
    void mouse(const char *what, void (*send)(const devices::Mouse &, quint64),
               const devices::Mouse &mouse);
    template <typename Send>
    void make(const Rules::Event &event, const QString &what, Send send);
    Rules::Event described(Rules::Kind kind) const;
    void drag(QWidget *window, const QPoint &from);

    void breathe();
    int untilTheMoment();
    devices::Key drawnKey();
    Qt::KeyboardModifiers drawnModifiers();
    QString drawnText();
    QWidget *front() const;
    quint64 stamp();

    Luck &m_luck;
    const Program::Fail m_fail;
    std::unique_ptr<Program> m_program;
    std::unique_ptr<Rules> m_rules;
    Mood m_mood = Mood::Helpful;
    int m_moodLeft = 0;
    int m_rootLeft = 0;
    int m_events = 0;
    int m_wanted = 0;
    quint64 m_stamp = 0;
    bool m_escaped = false; ///< a task was ended by Escape just now

    int m_changes = 0; ///< at the last helpful deed that changed something
    int m_futile = 0;  ///< helpful deeds since
    QMap<QString, int> m_counts;
};
