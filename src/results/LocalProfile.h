#pragma once

#include <QWebEngineProfile>

/// The browser's profile for what the program shows: it keeps nothing on the disk and fetches
/// nothing but local files, so that names of patients leave this machine by no address.
class LocalProfile : public QWebEngineProfile
{
    Q_OBJECT

public:
    explicit LocalProfile(QObject *parent);
};
