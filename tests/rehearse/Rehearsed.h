#pragma once

#include <QByteArray>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>

/// The installed program, run with a data root of a test's own. Paths are relative to the root.
class Rehearsed
{
public:
    struct Run
    {
        int code = -1; ///< -1 if the program crashed or could not be started
        QByteArray out;
        QByteArray error;
    };

    /// One line that says why, and nothing else.
    static void isComplaint(const Rehearsed::Run &run, int code, const QByteArray &text)
    {
        QCOMPARE(run.error, "kelmoran-rehearse: " + text + '\n');
        QCOMPARE(run.code, code);
        QCOMPARE(run.out, QByteArray());
    }

    QString path(const QString &relative) const { return m_root.filePath(relative); }

    /// Runs a program to its end.
    static Run execute(const QString &program, const QStringList &arguments)
    {
        QProcess process;
        process.start(program, arguments);
        Run run;
        constexpr int patience = 100'000; // ms
        if (process.waitForFinished(patience) && process.exitStatus() == QProcess::NormalExit)
            run.code = process.exitCode();
        run.out = process.readAllStandardOutput();
        run.error = process.readAllStandardError();
        return run;
    }

    /// The rehearsal with these arguments alone.
    static Run withArguments(const QStringList &arguments)
    {
        return execute(QStringLiteral(KELMORAN_REHEARSE), arguments);
    }

    /// A test of this name, "test1" to "test7", in this root.
    Run playTask(const QString &task, const QStringList &arguments = {}) const
    {
        return withArguments(QStringList{QStringLiteral("--root"), path(QStringLiteral("root")),
                                         QStringLiteral("--task"), task} +
                             arguments);
    }

    /// An attention test in this root.
    Run play(const QStringList &arguments = {}) const
    {
        return playTask(QStringLiteral("test2"), arguments);
    }

    /// The argument for an observer with this description.
    QStringList observer(const QByteArray &json) const
    {
        return {QStringLiteral("--observer"), write(QStringLiteral("observer.json"), json)};
    }

    /// The argument for a script of these keys.
    QStringList keys(const QByteArray &script) const
    {
        return {QStringLiteral("--keys"), write(QStringLiteral("keys.txt"), script)};
    }

    /// Writes a file beside the root and returns its path.
    QString write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("%s can't be written", qPrintable(name));
        return file.fileName();
    }

    /// The patient has been trained for the visual perception task: 67, 50 and 150 ms.
    void storeThresholds() const
    {
        if (!QDir().mkpath(path(QStringLiteral("root/Parameters"))))
            qFatal("no folder for the patients' list");
        write(QStringLiteral("root/Parameters/patients_list.txt"),
              "Mrs.;REHEARSAL;Patient;01.01.1960;0;0;0;0;0;0;0;67;50;150\r\n");
    }

    /// A file of the root; empty if it isn't there.
    QByteArray bytes(const QString &relative) const
    {
        QFile file(path(QStringLiteral("root/") + relative));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// The lines of a file of the root behind its header, each split into fields.
    QList<QList<QByteArray>> rows(const QString &relative) const
    {
        QList<QList<QByteArray>> rows;
        for (const QByteArray &line : bytes(relative).split('\n').mid(1)) {
            if (!line.isEmpty())
                rows.append(line.split(';'));
        }
        return rows;
    }

    /// The rows of the trials, the markers of the assessor included.
    QList<QList<QByteArray>> trials() const { return rows(QStringLiteral("Results/output.csv")); }

    /// Every file of the root with its bytes.
    QMap<QString, QByteArray> files() const
    {
        QMap<QString, QByteArray> files;
        const QString root = path(QStringLiteral("root"));
        QDirIterator it(root, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString name = QDir(root).relativeFilePath(it.next());
            files.insert(name, bytes(name));
        }
        return files;
    }

private:
    QTemporaryDir m_root;
};
