#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

/// The files of a data root, as they must be at every moment: read anew after each event, as far as
/// they have grown. A promise that isn't kept is told once, as a text, by check().
class Books
{
public:
    /// @param root the data root
    explicit Books(QString root);

    /// Reads what is new. Returns what is wrong, empty if nothing is.
    QString check();
    /// The whole tree: no file but those that are told, nothing left behind. Slower.
    QString checkTree() const;

    // What was done between two calls of check(), as far as the files can't tell it.

    /// A task has taken the screen.
    void runBegins();
    /// "Go" was pressed: the ranks begin anew.
    void blockBegins();
    /// The number of valid trials that the panel shows.
    void wants(int number);
    /// The patient to whom the program writes.
    void chosen(const QString &patientKey) { m_chosen = patientKey; }
    /// A registration may be filed.
    void expectRegistration() { m_registration = true; }

    /// One trial of output.csv.
    struct Trial
    {
        QByteArray bytes; ///< the row with its line end
        QByteArray who;   ///< the five columns of the identity
        int task = 0;
        int session = 0;
        int rank = 0;
        bool error = false;
        bool struck = false; ///< no result in an invalid row, as the key E leaves it

        QByteArray result; ///< the column that holds the answer
    };

    int trials() const { return m_trials; }
    int struck() const { return m_struck; }
    int paused() const { return m_paused; }
    int interrupted() const { return m_interrupted; }
    int finished() const { return m_finished; }
    int registered() const { return m_registered; }
    /// Finished tests by the column `task`, 1 to 7.
    const QMap<int, int> &finishedByTask() const { return m_finishedByTask; }
    const Trial &last() const { return m_last; }

    /// The fields of a patient's line as it stands in the list; empty if there is none.
    QStringList patient(const QString &key) const;
    int patients() const { return int(m_patients.size()); }

private:
    /// A file that is only added to.
    struct Log
    {
        QString path;
        qint64 read = 0; ///< bytes
        QByteArray header;
        bool seen = false;
    };

    QString readTrials();
    QString readTimings();
    QString readValid();
    QString readScores();
    QString readPatients();
    QString checkDialogFiles() const;

    /// The lines that were added; what is wrong goes into `wrong`.
    QList<QByteArray> grown(Log &log, QString &wrong) const;
    QString archived(int file, const QByteArray &line) const;
    QString takeTrial(const QByteArray &line);
    QString takeMarker(const QList<QByteArray> &fields);
    QString checkRank(const Trial &trial) const;
    QString checkValid(const QList<QByteArray> &rows);
    QString takeScores(int file, const QByteArray &line);
    QString comparePatients(const QList<QStringList> &now);

    const QString m_root;
    Log m_output;
    Log m_timing;
    Log m_valid;
    QList<Log> m_scores;
    QList<QStringList> m_patients;
    QByteArray m_listStamp;
    QString m_chosen;
    bool m_registration = false;

    QList<Trial> m_block;    ///< the trials since "Go", or since the test began
    Trial m_last;            ///< of the run
    bool m_begins = true;    ///< the next trial is the first one of a block
    bool m_runBegins = true; ///< and of a run
    int m_wanted = 0;
    bool m_edited = false; ///< the number was changed within the block
    bool m_added = false;  ///< valid rows have come, and their scores are due
    int m_owed = 0;        ///< the session number that the list owes to a finished test
    int m_owedField = 0;

    int m_trials = 0;
    int m_timings = 0;
    int m_struck = 0;
    int m_paused = 0;
    int m_interrupted = 0;
    int m_finished = 0;
    int m_registered = 0;
    QMap<int, int> m_finishedByTask;
};
