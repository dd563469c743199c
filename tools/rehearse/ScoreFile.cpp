#include "ScoreFile.h"

#include "dataFolders.h"

#include <QFile>
#include <QFileInfo>

ScoreFile::ScoreFile(int task)
    // The last three buttons are parts of the first task.
    : m_path(dataFolders::path(dataFolders::results,
                               QStringLiteral("results_T%1.csv").arg(task > 4 ? 1 : task)))
{
    mark();
}

void ScoreFile::mark()
{
    m_size = QFileInfo(m_path).size();
}

QByteArray ScoreFile::newRow() const
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly) || file.size() <= m_size)
        return {};
    file.seek(m_size);
    const QByteArray added = file.readAll();
    const qsizetype before = added.lastIndexOf('\n', -2);
    // A new file begins with its header.
    return before < 0 && m_size == 0 ? QByteArray() : added.sliced(before + 1);
}
