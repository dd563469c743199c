#pragma once

#include "FaultyDisk.h"
#include "Options.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// The files of a data root with their bytes, by their paths from there.
using Files = QMap<QString, QByteArray>;

/// What is done in one run of the program, from its start to its end: the screen is calibrated or
/// its frequency set, a patient is registered or chosen, one test is played, the assessor's record
/// is changed. Always at the same moments of virtual time, whatever fails on the way, so that two
/// runs differ by what the disk did alone.
struct Plan
{
    QString name;
    Options options;          ///< the task, its keys, the patient
    Files before;             ///< what lies in the data root
    bool registers = false;   ///< the patient isn't in the list
    bool twoDisks = false;    ///< bin/ lies on another file system
    bool report = false;      ///< the test leaves a report in PDF
    bool keepsRecord = false; ///< the assessor's record is changed on the form, but not kept
    bool measures = true;     ///< the calibration is left with Escape otherwise

    static QList<Plan> all();
};

/// What came of it.
struct Outcome
{
    Files before;
    Files files;
    Files movedAway;
    QStringList boxes; ///< their texts
    QStringList early; ///< those that opened while a trial ran
    std::vector<faultyDisk::Call> calls;
    std::size_t startCalls = 0; ///< those before the main window stood
    std::size_t deskCalls = 0;  ///< those before the patient was chosen
    bool chosen = false;        ///< the patient could be chosen
    bool ended = false;         ///< nothing stood still
    QString progress;           ///< how the test ended
    QStringList nextBoxes;      ///< at the next start, with a whole disk
    qsizetype nextPatients = 0; ///< that it finds in the list
};

/// A call that fails.
struct Fault
{
    faultyDisk::Way way = faultyDisk::Way::None;
    std::size_t call = 0;
};

/// What is wrong with the place of the data root, by the system's own means.
struct Place
{
    QString folder;             ///< in which the root is made; empty: among the temporary files
    std::optional<qint64> room; ///< bytes that are left on its disk, which should be a small one
    QString closed;             ///< the file or folder that belongs to somebody else; needs root
    bool readable = false;      ///< and can be read all the same
};

/// Carries a plan out in a data root of its own.
Outcome carryOut(const Plan &plan, const Fault &fault = {}, const Place &place = {});
