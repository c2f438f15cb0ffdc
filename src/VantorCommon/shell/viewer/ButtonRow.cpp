// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/viewer/ButtonRow_p.h>

#include <QMenu>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>
#include <algorithm>

CButtonRow::CButtonRow(QWidget* pParent)
    : QWidget(pParent), m_pMore(new QToolButton(this)), m_pMenu(new QMenu(m_pMore))
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_pMore->setText(QStringLiteral("\u00BB"));
    m_pMore->setToolTip(QStringLiteral("More"));
    m_pMore->setAccessibleName(m_pMore->toolTip());
    m_pMore->setAutoRaise(true);
    m_pMore->setFocusPolicy(Qt::NoFocus);
    m_pMore->setPopupMode(QToolButton::InstantPopup);
    m_pMore->setMenu(m_pMenu);
    m_pMore->hide();
    connect(m_pMenu, &QMenu::aboutToShow, this, &CButtonRow::FillMenu);
}

void CButtonRow::Add(QPushButton* pButton)
{
    pButton->setParent(this);
    m_vctButtons.push_back(pButton);
    m_pMore->setFixedSize(pButton->size());
    updateGeometry();
}

void CButtonRow::Move(QPushButton* pButton, int nPlace)
{
    m_vctButtons.erase(std::remove(m_vctButtons.begin(), m_vctButtons.end(), pButton), m_vctButtons.end());
    m_vctButtons.insert(m_vctButtons.begin() + nPlace, pButton);
    PlaceAll();
}

QSize CButtonRow::sizeHint() const
{
    return {m_pMore->width() * static_cast<int>(m_vctButtons.size()), m_pMore->height()};
}

QSize CButtonRow::minimumSizeHint() const
{
    return {m_pMore->width() * 2, m_pMore->height()};
}

void CButtonRow::resizeEvent(QResizeEvent* pEvent)
{
    QWidget::resizeEvent(pEvent);
    PlaceAll();
}

void CButtonRow::PlaceAll()
{
    const int nButtons = static_cast<int>(m_vctButtons.size());
    const int nPlaces = width() / m_pMore->width();
    const int nShown = nPlaces >= nButtons ? nButtons : std::max(1, nPlaces - 1);
    for (int i = 0; i < nButtons; ++i) {
        QPushButton* pButton = m_vctButtons[static_cast<std::size_t>(i)];
        Place(pButton, i);
        pButton->setVisible(i < nShown);
    }
    Place(m_pMore, nShown);
    m_pMore->setVisible(nShown < nButtons);
}

void CButtonRow::Place(QWidget* pWidget, int nPlace)
{
    const QRect place(QPoint(nPlace * m_pMore->width(), 0), m_pMore->size());
    pWidget->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
}

void CButtonRow::FillMenu()
{
    m_pMenu->clear();
    for (QPushButton* pButton : m_vctButtons) {
        if (!pButton->isHidden())
            continue;
        QAction* pEntry =
            m_pMenu->addAction(pButton->icon(), pButton->toolTip(), pButton, &QPushButton::click);
        pEntry->setEnabled(pButton->isEnabled());
        pEntry->setCheckable(pButton->isCheckable());
        pEntry->setChecked(pButton->isChecked());
    }
}
