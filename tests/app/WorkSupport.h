// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "HostSupport.h"

#include "Viewers.h"

#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QAbstractButton>
#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>
#include <QTemporaryDir>
#include <QTimer>

/// The controller of the 2D view of one viewer.
inline CImageView2DCtrl* CtrlOf(const Host& host, int nView)
{
    const auto item =
        CMVCManager::FindFirst([&](const SMVC& mvc) { return mvc.pView == host.Viewer(nView); });
    return dynamic_cast<CImageViewerCtrl*>(item->pCtrl)->Get2DCtrl();
}

inline CAnnotationStore* StoreOf(const Host& host, int nView)
{
    return CtrlOf(host, nView)->GetAnnotationStore();
}

/// How many annotations a page has, shown or not: the page of the image at an index.
inline int CountOf(const Host& host, int nView, int nImage)
{
    const auto document = StoreOf(host, nView)->TakeDocument(nImage);
    const auto nPage = static_cast<std::size_t>(StoreOf(host, nView)->GetContext(nImage).page);
    return nPage < document.pages.size() ? static_cast<int>(document.pages[nPage].objects.size()) : -1;
}

/// A picture in a folder of its own, which keeps the annotations beside it, too.
class Pictures
{
public:
    /// @return the path of a copy of the photo
    QString Add(const QString& strName) const
    {
        const QString strPath = folder.filePath(strName);
        return QFile::copy(kPhoto, strPath) ? strPath : QString();
    }
    static QString Beside(const QString& strPicture) { return strPicture + QStringLiteral(".vantor.json"); }
    static QByteArray Bytes(const QString& strPath)
    {
        QFile file(strPath);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static bool Write(const QString& strPath, const QByteArray& bytes)
    {
        QFile file(strPath);
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }

    QTemporaryDir folder;
};

/// Answers the questions that come up, by the text of a button, and keeps what they say.
class Answers : public QObject
{
public:
    explicit Answers(const QString& strButton) : m_strButton(strButton)
    {
        connect(&m_timer, &QTimer::timeout, this, &Answers::Look);
        m_timer.start(0);
    }

    QStringList lstAsked; ///< the texts, with what is listed

private:
    void Look()
    {
        auto* pBox = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!pBox)
            return;
        lstAsked << pBox->text() + QLatin1Char('\n') + pBox->informativeText();
        for (QAbstractButton* pButton : pBox->buttons())
            if (pButton->text().remove(QLatin1Char('&')) == m_strButton)
                return pButton->click();
        lstAsked << QStringLiteral("no button %1").arg(m_strButton);
        pBox->reject();
    }

    QString m_strButton;
    QTimer m_timer;
};

/// Chooses a file in the next file dialog, in place of what was to be chosen in one that did not come.
inline void ChooseFile(const QString& strPath)
{
    static QPointer<QTimer> s_pWaiting;
    delete s_pWaiting;
    auto* pTimer = new QTimer(qApp);
    s_pWaiting = pTimer;
    QObject::connect(pTimer, &QTimer::timeout, qApp, [=] {
        auto* pDialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (!pDialog)
            return;
        pTimer->deleteLater();
        pTimer->stop();
        pDialog->selectFile(strPath);
        QMetaObject::invokeMethod(pDialog, "accept");
    });
    pTimer->start(0);
}
