#pragma once

#include <QApplication>

#include <vector>

class TaskDialog;

/// An application that notes how long each slot of a trial's chain took, with the paints that
/// followed it, and how late each interval of the chain was.
class ChainProbe : public QApplication
{
    Q_OBJECT

public:
    ChainProbe(int &argc, char **argv);

    /// Watches this task from now on.
    void watch(const TaskDialog &task);

    const std::vector<double> &lateness() const { return m_lateness; } ///< ms, each interval
    const std::vector<double> &work() const { return m_work; }         ///< ms, each link

    bool notify(QObject *receiver, QEvent *event) override;

private:
    void linkEntered(const TaskDialog &task, int stage);

    std::vector<double> m_lateness;
    std::vector<double> m_work;
    int m_depth = 0;
    bool m_watching = false;
    bool m_linkRuns = false; ///< the event that is being delivered has entered a link
    qint64 m_entered = 0;    ///< ns, when the last link was entered
    int m_nominal = -1;      ///< ms, the interval that it started
    int m_lastStage = 0;
};
