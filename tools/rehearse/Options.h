#pragma once

#include "KeyScript.h"
#include "Observer.h"

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>

/// What is to be rehearsed, as the command line tells it.
struct Options
{
    struct Patient
    {
        QString lastName = QStringLiteral("REHEARSAL");
        QString firstName = QStringLiteral("Patient");
        QDate dateOfBirth{1960, 1, 1};
        QString gender = QStringLiteral("Mrs."); ///< "Mr.", "Mrs." or empty

        /// The text of the patient in the list.
        QString key() const;
    };

    QString root; ///< absolute
    int task = 2; ///< number of the test button, 1 to 7
    Patient patient;
    bool instruction = false;
    bool training = false;
    bool fixedDuration = false;
    bool report = false;
    std::optional<int> number;    ///< valid trials of the test; none: the task's own
    quint32 seed = 1;             ///< of the draws and of the patient
    int repeat = 1;               ///< tests to be played, one after the other
    std::optional<int> language;  ///< number of the language; none: by the catalogues there
    std::optional<int> frequency; ///< number of the frequency; none: as it stands
    QDateTime start;              ///< the date at which virtual time begins
    Observer observer;
    KeyScript keys;

    /// The visual perception task, or a part of it.
    bool isVision() const { return task == 1 || task > 4; }
    bool isMovement() const { return task == 3; }
    bool isMemory() const { return task == 4; }

    enum class Wish { Rehearse, Help, Complain };

    struct Parsed;
    /// Reads the arguments, the first of which is the program's name, and the files that they name.
    static Parsed parse(const QStringList &arguments);
};

struct Options::Parsed
{
    Wish wish = Wish::Rehearse;
    Options options; ///< if the wish is to rehearse
    QString text;    ///< the help, or one line of complaint
};
