// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CStatusField.h"

#include <QKeyEvent>
#include <QTimer>

namespace
{
constexpr int kMargin = 12; // pixels, of the line editor
}

CStatusField::CStatusField(const QString& strName, const QString& strToolTip, const QString& strWidest,
                           QWidget* pParent)
    : QLineEdit(pParent)
{
    setFrame(false);
    setAlignment(Qt::AlignRight);
    setFocusPolicy(Qt::ClickFocus); // Tab goes from viewer to viewer
    setAcceptDrops(false);          // files that are dropped here belong to the window
    setAccessibleName(strName);
    setToolTip(strToolTip);
    setFixedWidth(fontMetrics().horizontalAdvance(strWidest) + kMargin);
    connect(this, &QLineEdit::returnPressed, this, &CStatusField::Enter);
    setEnabled(false);
}

void CStatusField::ShowText(const QString& strText)
{
    m_strShown = strText;
    if (!hasFocus())
        setText(strText);
}

void CStatusField::Enter()
{
    if (Take(text())) {
        Q_EMIT signal_Left();
        return;
    }
    Q_EMIT signal_Refused(text());
    selectAll();
}

void CStatusField::focusInEvent(QFocusEvent* pEvent)
{
    QLineEdit::focusInEvent(pEvent);
    QTimer::singleShot(0, this, &QLineEdit::selectAll); // after the press that gave the focus
}

void CStatusField::focusOutEvent(QFocusEvent* pEvent)
{
    QLineEdit::focusOutEvent(pEvent);
    ShowText(m_strShown);
}

void CStatusField::keyPressEvent(QKeyEvent* pEvent)
{
    if (pEvent->key() == Qt::Key_Escape)
        Q_EMIT signal_Left();
    else
        QLineEdit::keyPressEvent(pEvent);
}
