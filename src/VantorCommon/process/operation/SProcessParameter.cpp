// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/operation/SProcessParameter.h>

#include <cmath>

namespace
{
SProcessParameter Make(const QString& strLabel, EProcessParameter eKind, const QVariant& varDefault)
{
    SProcessParameter parameter;
    parameter.strLabel = strLabel;
    parameter.eKind = eKind;
    parameter.varDefault = varDefault;
    return parameter;
}

bool IsText(const QVariant& varValue)
{
    return varValue.userType() == QMetaType::QString;
}
} // namespace

SProcessParameter SProcessParameter::Choice(const QString& strLabel, const QStringList& lstChoices)
{
    SProcessParameter parameter = Make(strLabel, EProcessParameter_Choice, 0);
    parameter.lstChoices = lstChoices;
    return parameter;
}

SProcessParameter SProcessParameter::Whole(const QString& strLabel, int nDefault, int nLeast, int nMost)
{
    SProcessParameter parameter = Make(strLabel, EProcessParameter_Whole, nDefault);
    parameter.dblLeast = nLeast;
    parameter.dblMost = nMost;
    return parameter;
}

SProcessParameter SProcessParameter::Real(const QString& strLabel, double dblDefault, double dblLeast,
                                          double dblMost, double dblStep)
{
    SProcessParameter parameter = Make(strLabel, EProcessParameter_Real, dblDefault);
    parameter.dblLeast = dblLeast;
    parameter.dblMost = dblMost;
    parameter.dblStep = dblStep;
    return parameter;
}

SProcessParameter SProcessParameter::Text(const QString& strLabel, const QString& strDefault)
{
    return Make(strLabel, EProcessParameter_Text, strDefault);
}

SProcessParameter SProcessParameter::Folder(const QString& strLabel, const QString& strDefault)
{
    return Make(strLabel, EProcessParameter_Folder, strDefault);
}

QVariant SProcessParameter::Accepted(const QVariant& varValue) const
{
    if (eKind == EProcessParameter_Text || eKind == EProcessParameter_Folder)
        return varValue.toString();
    if (eKind == EProcessParameter_Choice && IsText(varValue)) {
        const int nChoice = lstChoices.indexOf(varValue.toString());
        return nChoice < 0 ? QVariant() : QVariant(nChoice);
    }
    bool bNumber = false;
    const double dblValue = varValue.toDouble(&bNumber);
    const bool bChoice = eKind == EProcessParameter_Choice;
    const bool bInside =
        dblValue >= (bChoice ? 0.0 : dblLeast) && dblValue <= (bChoice ? lstChoices.size() - 1.0 : dblMost);
    if (!bNumber || !bInside)
        return {};
    if (eKind == EProcessParameter_Real)
        return dblValue;
    return std::floor(dblValue) == dblValue ? QVariant(static_cast<int>(dblValue)) : QVariant();
}

QVariant SProcessParameter::Shown(const QVariant& varValue) const
{
    return eKind == EProcessParameter_Choice ? lstChoices.value(varValue.toInt()) : varValue;
}

QString SProcessParameter::Refusal() const
{
    if (eKind == EProcessParameter_Choice)
        return QStringLiteral("%1 has no such choice.").arg(strLabel);
    const auto kind =
        eKind == EProcessParameter_Whole ? QStringLiteral("a whole number") : QStringLiteral("a number");
    return QStringLiteral("%1 must be %2 from %3 to %4.")
        .arg(strLabel, kind, QString::number(dblLeast), QString::number(dblMost));
}
