// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CActionTable.h"

#include <VantorCommon/view2d/CImageView2D.h>

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QTimer>
#include <algorithm>

namespace
{
bool IsKeyOfView(const QKeyEvent& event)
{
    for (auto eKey : {QKeySequence::Undo, QKeySequence::Redo, QKeySequence::Copy, QKeySequence::Paste})
        if (event.matches(eKey))
            return true;
    return event.key() == Qt::Key_Delete || event.key() == Qt::Key_Backspace || event.key() == Qt::Key_Escape;
}

bool IsOfUser(QEvent::Type eType)
{
    return eType == QEvent::MouseButtonRelease || eType == QEvent::KeyRelease || eType == QEvent::FocusIn ||
           eType == QEvent::Drop;
}

QString WithoutMnemonic(const QString& strText)
{
    QString strPlain = strText;
    // In Korean the letter follows the text: "열기(&O)".
    const int nBracket = strPlain.indexOf(QLatin1String("(&"));
    if (nBracket >= 0)
        strPlain.remove(nBracket, 4);
    return strPlain.remove(QLatin1Char('&')).remove(QStringLiteral("..."));
}
} // namespace

SActionText::SActionText(const char* pSource)
    : strText(QCoreApplication::translate("CMainWindow", pSource)), strName(QString::fromUtf8(pSource))
{
}

CActionTable::CActionTable(QObject* pParent) : QObject(pParent), m_pUpdateLater(new QTimer(this))
{
    m_pUpdateLater->setSingleShot(true);
    connect(m_pUpdateLater, &QTimer::timeout, this, &CActionTable::Update);
    qApp->installEventFilter(this);
}

QAction* CActionTable::Add(QMenu* pMenu, const SActionFace& face, const std::function<void()>& func,
                           const Condition& isUseful, const Condition& isChecked)
{
    QAction* pAction = pMenu->addAction(face.icon, face.text.strText);
    pAction->setObjectName(FreeName(WithoutMnemonic(face.text.strName)));
    // For the tool bar: Qt's own text would keep the letter of "열기(&O)".
    pAction->setIconText(WithoutMnemonic(face.text.strText));
    pAction->setToolTip(pAction->iconText());
    pAction->setShortcuts(face.lstKeys);
    pAction->setCheckable(static_cast<bool>(isChecked));
    connect(pAction, &QAction::triggered, this, [this, func] {
        func();
        Update();
    });
    m_vctEntries.push_back({pAction, isUseful, isChecked});
    return pAction;
}

QString CActionTable::FreeName(const QString& strName) const
{
    const auto isTaken = [this](const QString& strTried) {
        return std::any_of(m_vctEntries.begin(), m_vctEntries.end(),
                           [&](const SEntry& entry) { return entry.pAction->objectName() == strTried; });
    };
    QString strFree = strName;
    for (int i = 2; isTaken(strFree); ++i)
        strFree = strName + QString::number(i);
    return strFree;
}

void CActionTable::Watch(QMenu* pMenu)
{
    connect(pMenu, &QMenu::aboutToShow, this, &CActionTable::Update);
}

void CActionTable::Update()
{
    for (const SEntry& entry : m_vctEntries) {
        if (entry.isUseful)
            entry.pAction->setEnabled(entry.isUseful());
        if (entry.isChecked)
            entry.pAction->setChecked(entry.isChecked());
    }
}

std::vector<QAction*> CActionTable::Actions() const
{
    std::vector<QAction*> vctActions;
    for (const SEntry& entry : m_vctEntries)
        vctActions.push_back(entry.pAction);
    return vctActions;
}

bool CActionTable::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pEvent->type() == QEvent::ShortcutOverride) {
        if (qobject_cast<CImageView2D*>(pWatched) && IsKeyOfView(*static_cast<QKeyEvent*>(pEvent))) {
            pEvent->accept();
            return true;
        }
        Update();
    } else if (IsOfUser(pEvent->type())) {
        m_pUpdateLater->start(0);
    }
    return QObject::eventFilter(pWatched, pEvent);
}
