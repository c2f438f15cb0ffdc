// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/sniptool/CSnipToolCtrl.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/sniptool/CSnipTool.h>
#include <VantorCommon/sniptool/CSnipToolColors_p.h>
#include <VantorCommon/sniptool/CSnipToolModel.h>
#include <VantorCommon/sniptool/ScreenPortal_p.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CUtilManager.h>

#include <QDateTime>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QTimer>
#include <QWindow>

using Vantor::Algorithms::CImage;

namespace
{
// All in milliseconds.
constexpr int kLookInterval = 10; // between two checks of the screen
constexpr int kQuietTime = 50;    // unchanged for three frames: a compositor has caught up
constexpr int kRestless = 250;    // what changes longer than this is a moving picture
constexpr int kPatience = 1000;   // colours of the overlay that remain after that belong to the picture

constexpr QRgb kOverlayGrey = CSnipToolColors::Unblended(CSnipToolColors::kGrey);
constexpr QRgb kOverlayGreen = CSnipToolColors::Unblended(CSnipToolColors::kGreen);

QImage Grab(QScreen& screen, const QRect& rect)
{
    return screen.grabWindow(0, rect.left(), rect.top(), rect.width(), rect.height()).toImage();
}

void ProcessEventsFor(int nMilliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(nMilliseconds, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

bool IsOnScreen(const CSnipTool* pTool)
{
    return pTool && pTool->windowHandle() && pTool->windowHandle()->isExposed();
}

/// Whether a pixel still has the overlay's colour that it had before. Without a compositor, the pixels of a
/// hidden window stay until the windows below have painted.
bool ShowsRemains(const QImage& before, const QImage& now)
{
    if (before.size() != now.size() || before.depth() != 32 || now.depth() != 32)
        return false;
    for (int y = 0; y < now.height(); ++y) {
        const auto* pBefore = reinterpret_cast<const QRgb*>(before.constScanLine(y));
        const auto* pNow = reinterpret_cast<const QRgb*>(now.constScanLine(y));
        for (int x = 0; x < now.width(); ++x) {
            const QRgb colour = pNow[x] & RGB_MASK;
            if ((colour == kOverlayGrey || colour == kOverlayGreen) && (pBefore[x] & RGB_MASK) == colour)
                return true;
        }
    }
    return false;
}

/// Hides the tool and returns the part of the screen. It polls the window system until the tool is unmapped
/// and the windows below have painted.
QImage GrabBelow(CSnipTool* pTool, QScreen& screen, const QRect& rect)
{
    if (!pTool || !pTool->isVisible())
        return Grab(screen, rect);
    const QImage before = Grab(screen, rect);
    const QPointer<CSnipTool> pGuarded(pTool);
    pTool->hide();

    QElapsedTimer clock;
    clock.start();
    qint64 nChanged = 0;
    QImage now;
    while (clock.elapsed() < kPatience) {
        ProcessEventsFor(kLookInterval);
        const QImage last = now;
        now = Grab(screen, rect);
        if (IsOnScreen(pGuarded) || now != last)
            nChanged = clock.elapsed();
        const bool bSettled = clock.elapsed() - nChanged >= kQuietTime || clock.elapsed() >= kRestless;
        if (bSettled && !IsOnScreen(pGuarded) && !ShowsRemains(before, now))
            break;
    }
    return now;
}
} // namespace

CSnipToolCtrl::CSnipToolCtrl(CSnipToolModel* pModel, CSnipTool* pView, CImageView2DCtrl* pImageView2DCtrl)
    : m_pModel(pModel), m_pView(pView), m_pImageView2DCtrl(pImageView2DCtrl)
{
    if (!m_pView)
        return;
    connect(pView, &CSnipTool::signal_CaptureScreen, this, &CSnipToolCtrl::slot_CaptureScreen);
    connect(pView, &CSnipTool::signal_ExitCapture, this, &CSnipToolCtrl::slot_ExitCapture);
    // Closed by the window manager: the application must not stay minimised.
    connect(pView, &QDialog::rejected, this, &CSnipToolCtrl::slot_ExitCapture);
}

CSnipToolCtrl::~CSnipToolCtrl() = default;

bool CSnipToolCtrl::Undo()
{
    return false;
}

bool CSnipToolCtrl::Redo()
{
    return false;
}

void CSnipToolCtrl::slot_CaptureScreen(const QRect& rect)
{
    QScreen* pScreen = QGuiApplication::primaryScreen();
    const bool bGrab = m_pImageView2DCtrl && pScreen && !rect.isEmpty();
    const QPointer<CSnipToolCtrl> pGuarded(this);
    QImage picture;
    if (bGrab)
        picture = GrabBelow(m_pView, *pScreen, rect);
    else if (m_pView)
        m_pView->hide();
    if (!pGuarded || !m_pImageView2DCtrl)
        return;
    m_pImageView2DCtrl->SetApplicationVisible(true);
    if (bGrab)
        Deliver(picture);
    else if (pScreen)
        // Deliberate: an inverted region arrives unchanged and is refused, because the platform takes a
        // negative size for the rest of the screen.
        Fail(
            WARNING,
            QStringLiteral("Cannot capture a region of %1 x %2 pixels").arg(rect.width()).arg(rect.height()));
}

void CSnipToolCtrl::Fail(ELogLevel eLevel, const QString& strMessage)
{
    CLogger::Write(eLevel, "%s", qUtf8Printable(strMessage));
    Q_EMIT signal_Failed(strMessage + QLatin1Char('.'));
}

void CSnipToolCtrl::Deliver(const QImage& picture)
{
    if (picture.isNull()) {
        Fail(ERROR, QStringLiteral("Cannot capture the screen: the display server gives no picture"));
        return;
    }
    const auto pImage = std::make_shared<CImage>();
    if (CUtilManager::ConvertImage(picture, pImage.get()) && m_pModel)
        Push(pImage);
}

void CSnipToolCtrl::Push(const std::shared_ptr<CImage>& pImage)
{
    const QString strTime = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh.mm.ss"));
    pImage->SetName(QStringLiteral("Capture %1.png").arg(strTime).toStdWString());
    pImage->SetFolder(std::wstring());
    if (m_pImageView2DCtrl && m_pImageView2DCtrl->PushImage(pImage))
        m_pImageView2DCtrl->CopyToClipBoard();
}

void CSnipToolCtrl::AskDesktop()
{
    if (!m_pPortal) {
        m_pPortal = new CScreenPortal(this);
        connect(m_pPortal, &CScreenPortal::signal_Taken, this, &CSnipToolCtrl::Push);
        connect(m_pPortal, &CScreenPortal::signal_Failed, this, [this](const QString& strReason) {
            Fail(ERROR, QStringLiteral("Cannot capture the screen: ") + strReason);
        });
    }
    m_pPortal->Ask();
}

void CSnipToolCtrl::slot_ExitCapture()
{
    if (!m_pView || !m_pImageView2DCtrl)
        return;
    m_pView->hide();
    m_pImageView2DCtrl->SetApplicationVisible(true);
}

void CSnipToolCtrl::slot_OpenCaptureScreen()
{
}
