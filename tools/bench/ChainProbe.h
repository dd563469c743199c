#pragma once

#include <QApplication>

#include <map>
#include <vector>

class TaskDialog;

/// An application that notes how long each slot of a trial's chain took, with the paints that
/// followed it, and how late each interval of the chain was: from the start of its timer to the
/// delivery of its end.
class ChainProbe : public QApplication
{
    Q_OBJECT

public:
    ChainProbe(int &argc, char **argv);

    /// Watches this task from now on.
    void watch(const TaskDialog &task);

    const std::vector<double> &lateness() const { return m_lateness; } ///< ms, each interval
    /// ms, each link with its paints, by the link's number
    const std::map<int, std::vector<double>> &work() const { return m_work; }

    bool notify(QObject *receiver, QEvent *event) override;

private:
    void linkEntered(const TaskDialog &task, int stage);

    std::vector<double> m_lateness;
    std::map<int, std::vector<double>> m_work;
    int m_depth = 0;
    bool m_watching = false;
    bool m_linkRuns = false; ///< the event that is being delivered has entered a link
    qint64 m_delivered = 0;  ///< ns, when the delivery of the present event began
    qint64 m_entered = 0;    ///< ns, when the last link was entered
    int m_nominal = -1;      ///< ms, the interval that it started
    int m_lastStage = 0;
};
