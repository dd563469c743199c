#pragma once

#include "documents.h"
#include "ui_WebViewer.h"

#include <QDialog>
#include <QPointer>

class LocalProfile;
class QWebEngineView;

/// Shows a document that was installed beside the program: About, Publications or Video
/// instructions. Its web view is made at the first document, so that no browser process stands
/// beside a trial.
class WebViewer : public QDialog
{
    Q_OBJECT

public:
    explicit WebViewer(QWidget *parent = nullptr);
    ~WebViewer() override;

    /// The text that is shown: that of the file, with the placeholders of About filled in. None in
    /// a file that can't be read; a box has then told why.
    const QString &text() const { return m_text; }
    /// False: the text is fetched, but laid out by no browser. For tests without one.
    void setLayingOut(bool on) { m_layingOut = on; }

public Q_SLOTS:
    void goAbout();
    void goPublications();
    void goVideo_instructions();

protected:
    void hideEvent(QHideEvent *event) override;

private:
    void showDocument(documents::Document document);
    void layOut(const QString &path);

    Ui::WebViewerClass m_ui;
    LocalProfile *m_profile = nullptr;
    QPointer<QWebEngineView> m_view;
    QString m_text;
    bool m_layingOut = true;
};
