// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/measure/CMeasuresView.h>

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <cmath>
#include <utility>

namespace Measured = Vantor::Algorithms;

CMeasuresView::CMeasuresView(QWidget* pParent)
    : QWidget(pParent), m_pBox(new QGroupBox), m_pNames(new QLabel), m_pValues(new QLabel),
      m_translate([](const QString& strText) { return strText; })
{
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(m_pBox);
    auto* pRow = new QHBoxLayout(m_pBox);
    pRow->addWidget(m_pNames);
    pRow->addStretch();
    pRow->addWidget(m_pValues);
    m_pValues->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    for (QLabel* pLabel : {m_pNames, m_pValues}) {
        pLabel->setTextFormat(Qt::PlainText);
        pLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
    ShowAll();
}

CMeasuresView::~CMeasuresView() = default;

void CMeasuresView::SetMeasurement(MeasurementPtr pMeasured)
{
    m_pMeasured = std::move(pMeasured);
    ShowAll();
}

void CMeasuresView::SetTexts(const CMeasurementModel::Translate& translate)
{
    if (!translate)
        return;
    m_translate = translate;
    ShowAll();
}

void CMeasuresView::ShowAll()
{
    m_pBox->setTitle(m_translate(QStringLiteral("Measurements")));
    m_pBox->setVisible(m_pMeasured != nullptr);
    if (!m_pMeasured)
        return;
    QStringList lstNames;
    QStringList lstValues;
    for (const int nColumn : Measured::GetUsualMeasurementColumns()) {
        const double dblValue = m_pMeasured->values[static_cast<std::size_t>(nColumn)];
        if (std::isnan(dblValue))
            continue;
        const auto& column = Measured::GetMeasurementColumns()[static_cast<std::size_t>(nColumn)];
        const QString strTitle = QString::fromStdString(column.title);
        const QString strHeader =
            QString::fromStdString(Measured::MeasurementHeader(nColumn, m_pMeasured->unit));
        lstNames << m_translate(strTitle) + strHeader.mid(strTitle.size());
        lstValues << CMeasurementModel::NumberText(dblValue);
    }
    m_pNames->setText(lstNames.join(QLatin1Char('\n')));
    m_pValues->setText(lstValues.join(QLatin1Char('\n')));
}
