#include "LocalProfile.h"

#include <QWebEngineUrlRequestInterceptor>

namespace {

class LocalOnly : public QWebEngineUrlRequestInterceptor
{
public:
    using QWebEngineUrlRequestInterceptor::QWebEngineUrlRequestInterceptor;

    void interceptRequest(QWebEngineUrlRequestInfo &info) override
    {
        const QUrl url = info.requestUrl();
        const bool isLocal = url.isLocalFile() && url.host().isEmpty();
        info.block(!isLocal && url.scheme() != QLatin1String("data"));
    }
};

} // namespace

LocalProfile::LocalProfile(QObject *parent)
    : QWebEngineProfile(parent) // without a name it writes nothing to the disk
{
    setUrlRequestInterceptor(new LocalOnly(this));
}
