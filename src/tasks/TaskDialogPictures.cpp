#include "TaskDialog.h"

#include "TimeSource.h"
#include "displayServer.h"

#include <QCoreApplication>

// The pictures of a trial, each on the screen at its moment.

void TaskDialog::beginPictures()
{
    followScreen();
    m_refreshCounter.ask();
    m_pictures.beginTrial(m_refreshCounter.grid());
}

void TaskDialog::paintNow(const TaskTimer *ended)
{
    const TimeSource &time = TimeSource::current();
    if (time.lead() > 0) { // where nobody waits for time, all is there at once
        m_nextPicture.draw();
        // A server that has just been asked something is awake when the picture comes.
        m_pictures.awaitEnd(ended, displayServer::awaitDrawn);
        const qint64 began = time.nanoseconds();
        m_nextPicture.put();
        displayServer::awaitDrawn();
        m_pictures.painted(ended, began);
        paint();
    } else {
        m_pictures.awaitEnd(ended);
        paint();
        m_pictures.painted(ended, time.nanoseconds());
    }
}

/// Whatever has changed; what the next picture had drawn ahead, the toolkit draws once more.
void TaskDialog::paint()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateLater); // what was shown asks by this
    QCoreApplication::sendPostedEvents(this, QEvent::UpdateRequest);
}

void TaskDialog::rehearsePaint(const TaskTimer *timer, const QRect &area)
{
    const TimeSource &time = TimeSource::current();
    const qint64 began = time.nanoseconds();
    m_nextPicture.putAgain(area);
    displayServer::awaitDrawn();
    m_pictures.expectPaint(*timer, time.nanoseconds() - began);
}

void TaskDialog::startInterval(TaskTimer *timer, int ms)
{
    m_pictures.begin(*timer, ms);
}
