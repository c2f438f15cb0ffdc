// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CPageField.h"

#include <QLocale>

CPageField::CPageField(QWidget* pParent)
    : CStatusField(tr("Page"), tr("Page or image: click to type the number of another one"),
                   QStringLiteral("00000 / 00000"), pParent)
{
}

void CPageField::ShowPage(int nPage, int nCount)
{
    const bool bSeveral = nPage > 0 && nCount > 1;
    m_nCount = bSeveral ? nCount : 0;
    setEnabled(bSeveral);
    ShowText(bSeveral ? QStringLiteral("%1 / %2").arg(nPage).arg(nCount) : QString());
}

bool CPageField::Take(const QString& strText)
{
    bool bIsNumber = false;
    const int nPage = QLocale().toInt(strText.section(QLatin1Char('/'), 0, 0).simplified(), &bIsNumber);
    if (!bIsNumber || nPage < 1 || nPage > m_nCount)
        return false;
    Q_EMIT signal_Page(nPage);
    return true;
}
