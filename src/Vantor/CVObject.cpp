// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/CVObject.h>

#include <algorithm>
#include <atomic>
#include <cmath>

namespace Vantor
{

namespace
{
unsigned int NextUID()
{
    static std::atomic<unsigned int> nNext{1};
    unsigned int nUID = nNext.fetch_add(1, std::memory_order_relaxed);
    while (nUID == 0 || nUID == CVObject::kNoUID)
        nUID = nNext.fetch_add(1, std::memory_order_relaxed);
    return nUID;
}

template <class T> bool NearlyEqual(T a, T b, T tolerance)
{
    if (a == b)
        return true;
    const T difference = std::abs(a - b);
    return std::isfinite(difference) && difference <= tolerance * std::max({T(1), std::abs(a), std::abs(b)});
}
} // namespace

CVObject::CVObject() : m_nUID(NextUID())
{
}

CVObject::CVObject(const CVObject&) : m_nUID(NextUID())
{
}

CVObject& CVObject::operator=(const CVObject&)
{
    return *this;
}

CVObject::~CVObject() = default;

bool CVObject::CompareEqual(double a, double b)
{
    return NearlyEqual(a, b, 1e-9);
}

bool CVObject::CompareEqual(float a, float b)
{
    return NearlyEqual(a, b, 1e-6f);
}

} // namespace Vantor
