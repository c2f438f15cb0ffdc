// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "tests/support/TestImages.h"

#include <Vantor/image/CImage.h>

#include <QFile>
#include <QString>
#include <algorithm>
#include <memory>
#include <numeric>
#include <utility>
#include <vector>

/// The pages of the test data with their true texts. Texts are compared without regard to line breaks.
namespace OcrPages
{
inline QString Plain(const QByteArray& utf8)
{
    return QString::fromUtf8(utf8).normalized(QString::NormalizationForm_C).simplified();
}

/// Null when it cannot be loaded.
inline std::shared_ptr<Vantor::Algorithms::CImage> Page(const QString& strName)
{
    auto pImage = std::make_shared<Vantor::Algorithms::CImage>();
    const QString strPath = TestDataPath(QStringLiteral("ocr/") + strName);
    return pImage->Load(strPath.toStdWString()) == 0 ? pImage : nullptr;
}

/// Empty when the file cannot be read.
inline QString Truth(const QString& strName)
{
    QFile file(TestDataPath(QStringLiteral("ocr/") + strName));
    return file.open(QIODevice::ReadOnly) ? Plain(file.readAll()) : QString();
}

/// Characters to insert, remove or replace, as a percentage of the true text's.
inline double ErrorRate(const QString& strText, const QString& strTruth)
{
    std::vector<int> vctCosts(static_cast<std::size_t>(strTruth.size()) + 1);
    std::iota(vctCosts.begin(), vctCosts.end(), 0);
    for (int i = 0; i < strText.size(); ++i) {
        int nDiagonal = std::exchange(vctCosts[0], i + 1);
        for (std::size_t j = 1; j < vctCosts.size(); ++j) {
            const int nReplace = nDiagonal + (strText[i] != strTruth[static_cast<int>(j) - 1]);
            nDiagonal = vctCosts[j];
            vctCosts[j] = std::min({nReplace, vctCosts[j] + 1, vctCosts[j - 1] + 1});
        }
    }
    return 100.0 * vctCosts.back() / std::max(strTruth.size(), 1);
}
} // namespace OcrPages
