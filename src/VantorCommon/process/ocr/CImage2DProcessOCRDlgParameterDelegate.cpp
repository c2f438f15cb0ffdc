// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/ocr/CImage2DProcessOCRDlgParameterDelegate.h>

namespace
{
constexpr int kMinDpi = 1;
constexpr int kMaxDpi = 1024;
/// Deliberate: the resolution opens at 70, not at the stored value.
constexpr int kFirstDpi = 70;

std::vector<SProcessParameter> Parameters(const QStringList& lstLanguages)
{
    return {SProcessParameter::Choice(QStringLiteral("Language code"), lstLanguages),
            SProcessParameter::Folder(QStringLiteral("Language Data Path"), QString()),
            SProcessParameter::Whole(QStringLiteral("User Defined Dpi"), kFirstDpi, kMinDpi, kMaxDpi)};
}
} // namespace

CImage2DProcessOCRDlgParameterDelegate::CImage2DProcessOCRDlgParameterDelegate(QObject* pParent)
    : CImage2DProcessOCRDlgParameterDelegate(
          {QStringLiteral("eng"), QStringLiteral("vie"), QStringLiteral("kor")}, pParent)
{
}

CImage2DProcessOCRDlgParameterDelegate::CImage2DProcessOCRDlgParameterDelegate(
    const QStringList& lstLanguages, QObject* pParent)
    : CImage2DProcessToolDelegate(Parameters(lstLanguages), pParent)
{
}

CImage2DProcessOCRDlgParameterDelegate::~CImage2DProcessOCRDlgParameterDelegate() = default;
