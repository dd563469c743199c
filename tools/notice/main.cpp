#include <QApplication>
#include <QMessageBox>

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    QMessageBox box(QMessageBox::Warning, QStringLiteral("Kelmoran"),
                    QCoreApplication::arguments().value(1), QMessageBox::Ok);
    box.setTextFormat(Qt::PlainText); // a folder's name may hold anything
    box.exec();
    return 0;
}
