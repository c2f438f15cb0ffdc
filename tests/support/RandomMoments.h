// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/job/CJobs.h>

#include <QCoreApplication>
#include <QThread>
#include <random>

/// What tests share that end jobs at random moments.
namespace RandomMoments
{
/// How often a test does it: the number in the environment, or the usual one.
inline int HowOften(const char* pVariable, int nUsually)
{
    bool bNumber = false;
    const int nValue = qEnvironmentVariableIntValue(pVariable, &bNumber);
    return bNumber ? nValue : nUsually;
}

/// Lets threads work for a while of up to so many microseconds; every other time, what has come is delivered.
inline void Pass(std::mt19937& random, unsigned nMostMicroseconds)
{
    QThread::usleep(random() % nMostMicroseconds);
    if (random() % 2)
        QCoreApplication::processEvents();
}

inline void CancelAll()
{
    for (const auto& pJob : CJobs::Get().GetJobs())
        CJobs::Get().Cancel(pJob);
}
} // namespace RandomMoments
