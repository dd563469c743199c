#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWebEngineView>

#include <memory>
#include <optional>

class LocalProfile;
class QPrinter;
class ReportPage;

/// The web view of a report, with the browser's profile and pages behind it. Nothing of it exists
/// before the first report, so that no browser process stands beside a trial. It keeps nothing on
/// the disk and fetches nothing but local files.
class ReportView : public QObject
{
    Q_OBJECT

public:
    explicit ReportView(QWidget *window);
    ~ReportView() override;

    /// The view, made at its first use as a child of the window.
    QWebEngineView &view();

    /// Shows a report. One that is still being filed is filed first, unseen.
    void open(const QString &html, const QUrl &base);
    /// Files the report that is shown; ends in pdfFinished().
    void filePdf(const QString &path);
    /// Prints the report that is shown on paper, as soon as it is laid out. One that can't be laid
    /// out isn't printed.
    void print(std::unique_ptr<QPrinter> printer);

    /// A report is being laid out, filed or printed.
    bool isBusy() const;

Q_SIGNALS:
    void pdfFinished(const QString &path, const QString &error);
    /// Nothing was printed: to the file of this path, or on paper if it is empty.
    void paperFailed(const QString &path);
    /// isBusy() may have changed.
    void changed();

private:
    void makeView();
    void retire(ReportPage *page);
    void goOn();
    void startPaper();
    void finishPaper(bool ok);

    QWidget *m_window;
    LocalProfile *m_profile = nullptr;
    QPointer<QWebEngineView> m_view;
    QPointer<ReportPage> m_page;         ///< the report that is shown
    std::unique_ptr<QPrinter> m_printer; ///< lives until the paper is printed
    bool m_onPaper = false;              ///< the printer is being served
    QPointer<ReportPage> m_paperPage;    ///< from this report
    std::optional<QString> m_path;       ///< a PDF that waits for the paper
};
