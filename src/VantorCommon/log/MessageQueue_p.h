// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <atomic>
#include <utility>

/// An unbounded first-in, first-out queue whose two ends are independent: one thread at a time may push while
/// another one takes. Each end needs a lock of its own among several threads, and never the other's.
///
/// It is a linked list that always holds one spent node at its front. So the ends never work on the same node
/// but through its atomic link (M. Michael, M. Scott, "Simple, fast, and practical non-blocking and blocking
/// concurrent queue algorithms", 1996, the two-lock queue).
template <class T> class MessageQueue
{
public:
    MessageQueue() = default;
    ~MessageQueue()
    {
        while (m_pFront)
            delete std::exchange(m_pFront, m_pFront->pNext.load(std::memory_order_relaxed));
    }
    MessageQueue(const MessageQueue&) = delete;
    MessageQueue& operator=(const MessageQueue&) = delete;

    /// The adding end.
    void Push(T value)
    {
        auto* pNode = new SNode{std::move(value)};
        m_pBack->pNext.store(pNode, std::memory_order_release);
        m_pBack = pNode;
    }

    /// The taking end: false, and nothing changed, if the queue is empty.
    bool Take(T& value)
    {
        SNode* pNext = m_pFront->pNext.load(std::memory_order_acquire);
        if (!pNext)
            return false;
        value = std::move(pNext->value);
        delete std::exchange(m_pFront, pNext);
        return true;
    }

    /// The taking end.
    bool IsEmpty() const { return !m_pFront->pNext.load(std::memory_order_acquire); }

private:
    struct SNode {
        T value{};
        std::atomic<SNode*> pNext{nullptr};
    };

    // Each end on a cache line of its own.
    alignas(64) SNode* m_pFront = new SNode;
    alignas(64) SNode* m_pBack = m_pFront;
};
