// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CMainWindow.h"
#include "CommandLine.h"

#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/settings/CSettingManager.h>
#include <VantorCommon/settings/CSettingModel.h>
#include <VantorCommon/view2d/CImageView2D.h>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QEvent>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QSignalBlocker>
#include <QTimer>
#include <QTranslator>
#include <cstdio>
#include <cstdlib>
#include <functional>

namespace
{
enum EExit : int { EExit_OK = 0, EExit_Failure = 1, EExit_Usage = 2 };

/// Runs a function once, after the window has painted and the events of its start are processed.
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

int Complain(const QString& strText, EExit eExit)
{
    std::fprintf(stderr, "vantor-viewer: %s\n", qPrintable(strText));
    return eExit;
}

int SaveScreenshot(CMainWindow& window, const QString& strPath)
{
    const auto views = window.findChildren<CImageView2D*>();
    for (const CImageView2D* pView : views) // the images as they look in the end
        CJobs::Get().Finish(pView);
    if (window.grab().save(strPath))
        return EExit_OK;
    return Complain(SCommandLine::tr("cannot write %1").arg(strPath), EExit_Failure);
}

void InstallTranslations()
{
    auto* pOwn = new QTranslator(QCoreApplication::instance());
    if (pOwn->load(QLocale(), QStringLiteral("vantor-viewer"), QStringLiteral("_"),
                   QStringLiteral(":/app/translations")))
        QCoreApplication::installTranslator(pOwn);
    auto* pQt = new QTranslator(QCoreApplication::instance());
    if (pQt->load(QLocale(), QStringLiteral("qtbase"), QStringLiteral("_"),
                  QLibraryInfo::location(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(pQt);
}

/// Qt cannot continue without a display: prints its message and exits, instead of leaving a core file.
void ExitOnFatal(QtMsgType eType, const QMessageLogContext&, const QString& strText)
{
    std::fprintf(stderr, "vantor-viewer: %s\n", qPrintable(strText));
    if (eType == QtFatalMsg)
        std::_Exit(EExit_Failure);
}

/// --help, --version and complaints need no display.
/// @return an exit status, or -1 to go on
int Answer(int argc, char* argv[])
{
    const QCoreApplication app(argc, argv);
    InstallTranslations();
    const SCommandLine line = SCommandLine::Parse(QCoreApplication::arguments());
    if (line.bHelp)
        std::fputs(qPrintable(line.strHelp), stdout);
    else if (line.bVersion)
        std::puts("vantor-viewer " VANTOR_VERSION);
    else if (!line.strError.isEmpty())
        return Complain(line.strError + QLatin1Char('\n') + SCommandLine::tr("Try 'vantor-viewer --help'."),
                        EExit_Usage);
    else
        return -1;
    return EExit_OK;
}

/// Sets a folder for this run only: not stored, and before the stored one.
void UseFolder(const QString& strKey, const QString& strFolder)
{
    if (strFolder.isEmpty())
        return;
    QDir().mkpath(strFolder);
    const QSignalBlocker blocker(CSettingModel::GetInstance());
    CSettingManager::Set(strKey, QDir(strFolder).absolutePath());
}

/// Declines all questions, for example for a password, when there is nobody to answer.
class CNobody : public QObject
{
public:
    CNobody()
    {
        connect(&m_timer, &QTimer::timeout, this, [] {
            if (auto* pDialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                pDialog->reject();
        });
        m_timer.start(0);
    }

private:
    QTimer m_timer;
};

int OpenFiles(CMainWindow& window, const SCommandLine& line)
{
    const CNobody nobody;
    return window.OpenFiles(line.lstFiles, line.strLayout);
}

int Show(const SCommandLine& line)
{
    UseFolder(CSettingManager::kConfigFolder, line.strConfigDir);
    CMainWindow window;
    UseFolder(CSettingManager::kLogFolder, line.strLogDir);
    window.show();
    if (line.lstFiles.isEmpty() && line.strScreenshot.isEmpty())
        window.ReopenSession();
    if (line.strScreenshot.isEmpty()) {
        window.StartOpening(line.lstFiles, line.strLayout);
    } else {
        // Nobody would see the window's messages.
        if (OpenFiles(window, line) == 0 && !line.lstFiles.isEmpty())
            return EExit_Failure;
        new CFirstPaint(window, [&] { QApplication::exit(SaveScreenshot(window, line.strScreenshot)); });
    }
    return QApplication::exec();
}
} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication::setApplicationName(QStringLiteral("vantor-viewer"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VANTOR_VERSION));
    const int nAnswer = Answer(argc, argv);
    if (nAnswer >= 0)
        return nAnswer;

    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    qInstallMessageHandler(ExitOnFatal);
    QApplication app(argc, argv);
    qInstallMessageHandler(nullptr);
    QGuiApplication::setDesktopFileName(QStringLiteral("vantor-viewer"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/app/icons/vantor-viewer-64.png")));
    InstallTranslations();
    return Show(SCommandLine::Parse(QCoreApplication::arguments()));
}
