#pragma once

#include <QTextDocument>

class QPdfWriter;
class QTextBlock;
class QTextTable;

/// The instruction book: a text in HTML, laid out on pages so that a heading stands with what it
/// heads, a picture with its caption and a row of a table in one piece. A paragraph "v_contents" in
/// the text becomes the table of contents.
class Book : public QTextDocument
{
public:
    /// @param images the folder in which the images lie that the text names
    explicit Book(const QString &images);

    void write(QPdfWriter &pdf); ///< on its pages, with their numbers
    QString missing() const;     ///< an image that wasn't found; empty if all were

protected:
    QVariant loadResource(int type, const QUrl &name) override;

private:
    void layOut(QPdfWriter &pdf);
    void layOutAnew();
    void repeatHeads();
    void placeContents();
    void fillContents();
    void keepTogether();
    bool breakAtFirstSplit();
    bool keepRows(QTextTable &table);
    void split(QTextTable &table, int row);
    QList<QTextBlock> chapters() const;
    int pageAt(qreal y) const;

    const QString m_images;
    QString m_missing;
    QTextTable *m_contents = nullptr;
};
