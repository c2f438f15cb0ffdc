// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/sniptool/ScreenPortal_p.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/job/CJobs.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QStandardPaths>
#include <QUrl>

using Vantor::Algorithms::CImage;

namespace
{
const auto kService = QStringLiteral("org.freedesktop.portal.Desktop");
const auto kDesktop = QStringLiteral("/org/freedesktop/portal/desktop");
const auto kRequest = QStringLiteral("org.freedesktop.portal.Request");
constexpr uint kDone = 0;
constexpr uint kCancelled = 1;

/// Where the desktop will answer: its address is made of that of the caller and of a word of the caller's.
QString RequestPath(const QDBusConnection& bus, const QString& strToken)
{
    const QString strCaller = bus.baseService().mid(1).replace(QLatin1Char('.'), QLatin1Char('_'));
    return kDesktop + QStringLiteral("/request/") + strCaller + QLatin1Char('/') + strToken;
}

bool IsTemporary(const QString& strPath)
{
    const QString strFile = QFileInfo(strPath).canonicalFilePath();
    for (const QString& strFolder :
         {QDir::tempPath(), QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)})
        if (!strFolder.isEmpty() &&
            strFile.startsWith(QFileInfo(strFolder).canonicalFilePath() + QLatin1Char('/')))
            return true;
    return false;
}
} // namespace

bool CScreenPortal::IsNeeded()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

CScreenPortal::~CScreenPortal()
{
    if (m_strRequest.isEmpty())
        return;
    QDBusConnection::sessionBus().asyncCall(
        QDBusMessage::createMethodCall(kService, m_strRequest, kRequest, QStringLiteral("Close")));
}

void CScreenPortal::Ask()
{
    if (!m_strRequest.isEmpty())
        return;
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        Fail(QStringLiteral("there is no session bus"));
        return;
    }
    static int s_nAsked = 0;
    const QString strToken = QStringLiteral("vantor%1").arg(++s_nAsked);
    Listen(RequestPath(bus, strToken)); // before the call, because the answer may come with its reply
    QDBusMessage call = QDBusMessage::createMethodCall(kService, kDesktop,
                                                       QStringLiteral("org.freedesktop.portal.Screenshot"),
                                                       QStringLiteral("Screenshot"));
    // The prefix alone: some desktops refuse a question from no window at all.
    call << QStringLiteral("wayland:")
         << QVariantMap{{QStringLiteral("handle_token"), strToken}, {QStringLiteral("interactive"), true}};
    auto* pWatcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(pWatcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* pDone) {
        const QDBusPendingReply<QDBusObjectPath> reply = *pDone;
        pDone->deleteLater();
        if (m_strRequest.isEmpty()) // answered already
            return;
        if (reply.isError())
            Fail(QStringLiteral("the desktop offers no screenshots (%1)").arg(reply.error().message()));
        else if (reply.value().path() != m_strRequest)
            Listen(reply.value().path());
    });
}

/// In place of where it listened before.
void CScreenPortal::Listen(const QString& strRequest)
{
    Close();
    m_strRequest = strRequest;
    // A slot by name, because a signal of the bus has no pointer.
    QDBusConnection::sessionBus().connect(kService, strRequest, kRequest, QStringLiteral("Response"), this,
                                          SLOT(slot_Response(uint, QVariantMap)));
}

void CScreenPortal::Close()
{
    if (!m_strRequest.isEmpty())
        QDBusConnection::sessionBus().disconnect(kService, m_strRequest, kRequest, QStringLiteral("Response"),
                                                 this, SLOT(slot_Response(uint, QVariantMap)));
    m_strRequest.clear();
}

void CScreenPortal::Fail(const QString& strReason)
{
    Close();
    Q_EMIT signal_Failed(strReason);
}

void CScreenPortal::slot_Response(uint nResponse, const QVariantMap& mapResults)
{
    Close();
    if (nResponse == kCancelled)
        return;
    const QUrl url(mapResults.value(QStringLiteral("uri")).toString());
    if (nResponse == kDone && url.isLocalFile())
        Load(url.toLocalFile());
    else
        Fail(QStringLiteral("the desktop gives no picture"));
}

void CScreenPortal::Load(const QString& strPath)
{
    CJobs::Get().Start(this, {}, [this, strPath](Vantor::CProgress&) -> CJob::Finish {
        auto pImage = std::make_shared<CImage>();
        const bool bLoaded = pImage->Load(strPath.toStdWString()) == 0;
        if (IsTemporary(strPath))
            QFile::remove(strPath);
        return [this, pImage, bLoaded] {
            if (bLoaded)
                Q_EMIT signal_Taken(pImage);
            else
                Fail(QStringLiteral("the desktop's picture cannot be read"));
        };
    });
}
