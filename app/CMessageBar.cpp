// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CMessageBar.h"

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QToolButton>
#include <algorithm>

namespace
{
constexpr int kIconSize = 24;
constexpr int kMargin = 6;
constexpr int kMaxShown = 3; // messages; the log has the others
} // namespace

CMessageBar::CMessageBar(QWidget* pParent) : QFrame(pParent)
{
    setFrameShape(QFrame::StyledPanel);
    setAccessibleName(tr("Messages"));
    auto* pIcon = new QLabel(this);
    pIcon->setPixmap(QIcon(QStringLiteral(":/app/Image/warning.png")).pixmap(kIconSize, kIconSize));
    pIcon->setAccessibleName(tr("Warning"));
    m_pText = new QLabel(this);
    m_pText->setTextFormat(Qt::PlainText);
    m_pText->setWordWrap(true);
    // By mouse only, so that the label never takes the focus from a viewer.
    m_pText->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_pText->setFocusPolicy(Qt::NoFocus);
    auto* pClose = new QToolButton(this);
    pClose->setIcon(QIcon(QStringLiteral(":/Image/close.png")));
    pClose->setAutoRaise(true);
    pClose->setFocusPolicy(Qt::TabFocus);
    pClose->setToolTip(tr("Close the message"));
    pClose->setAccessibleName(pClose->toolTip());
    connect(pClose, &QToolButton::clicked, this, &CMessageBar::Dismiss);

    auto* pLayout = new QHBoxLayout(this);
    pLayout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    pLayout->addWidget(pIcon, 0, Qt::AlignTop);
    pLayout->addWidget(m_pText, 1);
    pLayout->addWidget(pClose, 0, Qt::AlignTop);
    qApp->installEventFilter(this);
    hide();
}

void CMessageBar::Tell(const QString& strMessage)
{
    if (strMessage.isEmpty())
        return;
    m_lstMessages.removeAll(strMessage);
    m_lstMessages.append(strMessage);
    m_bFresh = true;
    ShowMessages();
}

void CMessageBar::ForgetAbout(const QString& strPath)
{
    const int nBefore = m_lstMessages.size();
    const auto isAbout = [&](const QString& strMessage) { return strMessage.contains(strPath); };
    m_lstMessages.erase(std::remove_if(m_lstMessages.begin(), m_lstMessages.end(), isAbout),
                        m_lstMessages.end());
    if (m_lstMessages.isEmpty())
        Dismiss();
    else if (m_lstMessages.size() != nBefore)
        ShowMessages();
}

void CMessageBar::ForgetOld()
{
    if (!m_bFresh)
        Dismiss();
}

bool CMessageBar::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    switch (pEvent->type()) {
    case QEvent::ShortcutOverride: // sent for every key, even for a shortcut
    case QEvent::MouseButtonPress:
    case QEvent::Drop:
        m_bFresh = false;
        break;
    default:
        break;
    }
    return QFrame::eventFilter(pWatched, pEvent);
}

void CMessageBar::ShowMessages()
{
    const int nHidden = std::max(0, m_lstMessages.size() - kMaxShown);
    QString strText = m_lstMessages.mid(nHidden).join(QLatin1Char('\n'));
    if (nHidden > 0)
        strText += QLatin1Char('\n') + tr("%n more in the log.", nullptr, nHidden);
    m_pText->setText(strText);
    m_pText->setAccessibleName(strText);
    show();
    QAccessibleEvent alert(m_pText, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void CMessageBar::Dismiss()
{
    m_lstMessages.clear();
    hide();
}
