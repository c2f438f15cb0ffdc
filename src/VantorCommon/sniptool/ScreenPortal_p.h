// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>
#include <memory>

namespace Vantor::Algorithms
{
class CImage;
}

/// Asks the desktop for a picture of the screen where programs cannot see it themselves: its own dialog lets
/// the user choose what (interface org.freedesktop.portal.Screenshot of xdg-desktop-portal). One question at
/// a time. GUI thread only.
class CScreenPortal : public QObject
{
    Q_OBJECT

public:
    /// Whether programs see nothing of the screen: on Wayland.
    static bool IsNeeded();

    explicit CScreenPortal(QObject* pParent) : QObject(pParent) {}
    /// Takes an open question back.
    ~CScreenPortal() override;

    /// Asks, unless there is an open question. A window of the application should have the focus: some
    /// desktops refuse otherwise. One of the signals follows, or none when the user cancels.
    void Ask();

Q_SIGNALS:
    /// The picture in pixels of the device; its file is removed if it lay in a folder for temporary files.
    void signal_Taken(const std::shared_ptr<Vantor::Algorithms::CImage>& pImage);
    /// One line in English without a full stop.
    void signal_Failed(const QString& strReason);

private Q_SLOTS:
    void slot_Response(uint nResponse, const QVariantMap& mapResults);

private:
    void Listen(const QString& strRequest);
    void Close();
    void Fail(const QString& strReason);
    void Load(const QString& strPath);

    QString m_strRequest; ///< the path of the open question; empty: none
};
