#pragma once

#include <QByteArray>
#include <QString>

/// The file of scores to which a finished test adds one row.
class ScoreFile
{
public:
    /// The scores of a test button, 1 to 7; relative to the working directory.
    explicit ScoreFile(int task);

    /// What stands in the file now is old.
    void mark();
    /// The last row that was added since mark(), with its line end; empty if there is none.
    QByteArray newRow() const;

private:
    QString m_path;
    qint64 m_size = 0;
};
