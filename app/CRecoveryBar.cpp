// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CRecoveryBar.h"

#include <QAccessible>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QStringList>
#include <utility>

namespace
{
constexpr int kIconSize = 24;
constexpr int kMargin = 6;
constexpr int kMaxNamed = 3; // images

QString NameOf(const QString& strImage)
{
    return strImage.isEmpty() ? CRecoveryBar::tr("an image without a file") : QFileInfo(strImage).fileName();
}
} // namespace

CRecoveryBar::CRecoveryBar(QWidget* pParent) : QFrame(pParent)
{
    setFrameShape(QFrame::StyledPanel);
    setAccessibleName(tr("Unsaved annotations"));
    auto* pIcon = new QLabel(this);
    pIcon->setPixmap(QIcon(QStringLiteral(":/app/Image/info.png")).pixmap(kIconSize, kIconSize));
    pIcon->setAccessibleName(tr("Information"));
    m_pText = new QLabel(this);
    m_pText->setTextFormat(Qt::PlainText);
    m_pText->setWordWrap(true);
    auto* pLayout = new QHBoxLayout(this);
    pLayout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    pLayout->addWidget(pIcon, 0, Qt::AlignTop);
    pLayout->addWidget(m_pText, 1);
    const auto add = [&](const QString& strText, const QString& strToolTip) {
        auto* pButton = new QPushButton(strText, this);
        pButton->setToolTip(strToolTip);
        pButton->setFocusPolicy(Qt::TabFocus);
        pLayout->addWidget(pButton, 0, Qt::AlignTop);
        return pButton;
    };
    connect(add(tr("Restore"), tr("Open the images and show their annotations again")), &QPushButton::clicked,
            this, [this] { Q_EMIT signal_Restore(std::exchange(m_vctFound, {})); });
    connect(add(tr("Discard"), tr("Give these annotations up")), &QPushButton::clicked, this,
            &CRecoveryBar::Discard);
    connect(add(tr("Later"), tr("Ask again at the next start")), &QPushButton::clicked, this, &QWidget::hide);
    hide();
}

void CRecoveryBar::Offer(const FoundList& vctFound)
{
    m_vctFound = vctFound;
    setVisible(!vctFound.empty());
    if (vctFound.empty())
        return;
    QStringList lstNames;
    for (const auto& found : vctFound)
        for (const QString& strImage : found.lstImages)
            lstNames.append(NameOf(strImage));
    const int nMore = lstNames.size() - kMaxNamed;
    if (nMore > 0)
        lstNames = lstNames.mid(0, kMaxNamed) << tr("and %n more", nullptr, nMore);
    const QString strText = tr("The program ended before the annotations of these images were saved: %1.")
                                .arg(lstNames.join(QStringLiteral(", ")));
    m_pText->setText(strText);
    m_pText->setAccessibleName(strText);
    QAccessibleEvent alert(m_pText, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void CRecoveryBar::OfferToo(const AnnotationRecovery::SFound& found)
{
    FoundList vctFound = m_vctFound;
    vctFound.push_back(found);
    Offer(vctFound);
}

void CRecoveryBar::Discard()
{
    for (const auto& found : m_vctFound)
        AnnotationRecovery::Discard(found.strJournal);
    Offer({});
}
