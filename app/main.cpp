// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CMainWindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QEvent>
#include <QTimer>
#include <cstdio>
#include <functional>

namespace
{
/// Runs a function once, as soon as the window has painted and the events of its start are through.
class CFirstPaint : public QObject
{
public:
    CFirstPaint(QWidget& window, std::function<void()> func) : QObject(&window), m_func(std::move(func))
    {
        window.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override
    {
        if (pEvent->type() == QEvent::Paint) {
            pWatched->removeEventFilter(this);
            QTimer::singleShot(0, this, m_func);
        }
        return QObject::eventFilter(pWatched, pEvent);
    }

private:
    std::function<void()> m_func;
};

int SaveScreenshot(CMainWindow& window, const QString& strPath)
{
    if (window.grab().save(strPath))
        return 0;
    std::fprintf(stderr, "vantor-viewer: cannot write %s\n", qPrintable(strPath));
    return 1;
}
} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vantor-viewer"));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Shows, annotates and processes images."));
    parser.addHelpOption();
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Write a picture of the main window and quit."),
                                        QStringLiteral("file"));
    parser.addOption(screenshot);
    parser.addPositionalArgument(QStringLiteral("files"), QStringLiteral("Images and PDF documents."),
                                 QStringLiteral("[files...]"));
    parser.process(app);

    CMainWindow window;
    window.show();
    const QStringList lstFiles = parser.positionalArguments();
    const bool bNothingOpened = window.OpenFiles(lstFiles) == 0 && !lstFiles.isEmpty();
    if (bNothingOpened)
        return 1;
    if (parser.isSet(screenshot))
        new CFirstPaint(window,
                        [&] { QApplication::exit(SaveScreenshot(window, parser.value(screenshot))); });
    return QApplication::exec();
}
