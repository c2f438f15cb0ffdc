// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/measure/CPlotPanel.h>

#include <VantorCommon/measure/CPlotView.h>
#include <VantorCommon/measure/PlotChannels_p.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>
#include <utility>

namespace
{
constexpr int kMargin = 3;
}

CPlotPanel::CPlotPanel(QWidget* pParent)
    : QWidget(pParent), m_pBar(new QHBoxLayout), m_pChannels(new QComboBox), m_pLastControl(m_pChannels),
      m_pCopy(new QToolButton), m_pSave(new QToolButton), m_pPlot(new CPlotView), m_pInfo(new QLabel),
      m_pHover(new QLabel), m_translate([](const QString& strText) { return strText; })
{
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    pLayout->setSpacing(kMargin);
    pLayout->addLayout(m_pBar);
    pLayout->addWidget(m_pPlot, 1);
    pLayout->addWidget(m_pHover);
    pLayout->addWidget(m_pInfo);
    m_pBar->addWidget(m_pChannels);
    m_pBar->addStretch();
    for (QToolButton* pButton : {m_pCopy, m_pSave}) {
        pButton->setFocusPolicy(Qt::TabFocus);
        pButton->setAutoRaise(true);
        pButton->setToolButtonStyle(Qt::ToolButtonTextOnly);
        m_pBar->addWidget(pButton);
    }
    m_pCopy->setMenu(new QMenu(m_pCopy));
    m_pCopy->setPopupMode(QToolButton::InstantPopup);
    m_pCopy->menu()->addAction(QString(), this, &CPlotPanel::slot_CopyPicture);
    m_pCopy->menu()->addAction(QString(), this, &CPlotPanel::slot_CopyValues);
    for (QLabel* pLabel : {m_pHover, m_pInfo}) {
        pLabel->setTextFormat(Qt::PlainText);
        pLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
        pLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }
    m_pInfo->setWordWrap(true);
    connect(m_pSave, &QToolButton::clicked, this, &CPlotPanel::signal_Save);
    connect(m_pPlot, &CPlotView::signal_Hover, this, &CPlotPanel::ShowHover);
    connect(m_pChannels, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this] { ShowAll(); });
    ShowTexts();
}

CPlotPanel::~CPlotPanel() = default;

/// Tab goes through the bar as people read it.
void CPlotPanel::AddToBar(QWidget* pControl)
{
    m_pBar->insertWidget(m_pBar->indexOf(m_pLastControl) + 1, pControl);
    setTabOrder(m_pLastControl, pControl);
    m_pLastControl = pControl;
}

QString CPlotPanel::Text(const char* pText) const
{
    return m_translate(QString::fromUtf8(pText));
}

void CPlotPanel::SetTexts(const Translate& translate)
{
    if (!translate)
        return;
    m_translate = translate;
    ShowTexts();
    ShowAll();
}

void CPlotPanel::ShowTexts()
{
    m_pCopy->setText(Text("Copy"));
    m_pCopy->menu()->actions()[0]->setText(Text("Picture"));
    m_pCopy->menu()->actions()[1]->setText(Text("Values"));
    m_pSave->setText(Text("Save..."));
    m_pChannels->setAccessibleName(Text("Channels"));
    m_pChannels->setToolTip(Text("Channels"));
    for (int i = 0; i < m_pChannels->count(); ++i)
        m_pChannels->setItemText(i, m_translate(m_pChannels->itemData(i).toString()));
}

void CPlotPanel::OfferChannels(int nChannels)
{
    if (std::exchange(m_nChannels, nChannels) == nChannels)
        return;
    const QString strBefore = GetChannel();
    const QSignalBlocker block(m_pChannels);
    m_pChannels->clear();
    for (const QString& strChoice : PlotChannels::Choices(nChannels))
        m_pChannels->addItem(m_translate(strChoice), strChoice);
    m_pChannels->setCurrentIndex(std::max(0, m_pChannels->findData(strBefore)));
}

QString CPlotPanel::GetChannel() const
{
    return m_pChannels->currentData().toString();
}

void CPlotPanel::ShowPlot(SPlot sPlot, const QString& strInfo)
{
    const bool bPlot = sPlot.Count() > 0;
    m_pChannels->setVisible(bPlot);
    m_pCopy->setEnabled(bPlot);
    m_pSave->setEnabled(bPlot);
    m_pInfo->setText(strInfo);
    m_pPlot->SetPlot(std::move(sPlot));
}

/// The line keeps its height when nothing is under the mouse.
void CPlotPanel::ShowHover(int nIndex)
{
    m_pHover->setText(nIndex < 0 ? QStringLiteral(" ") : HoverText(nIndex));
}

void CPlotPanel::slot_CopyPicture()
{
    if (m_pPlot->GetPlot().Count() > 0)
        QApplication::clipboard()->setImage(m_pPlot->GetPicture());
}

void CPlotPanel::slot_CopyValues()
{
    if (m_pPlot->GetPlot().Count() > 0)
        QApplication::clipboard()->setText(QString::fromUtf8(m_pPlot->GetPlot().ToTable('\t')));
}
