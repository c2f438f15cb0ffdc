// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <atomic>
#include <utility>

/// An unbounded first-in, first-out queue. Any number of threads may push at the same time, without a lock
/// and without waiting for each other; one thread at a time may take, so several of them need a lock. The
/// messages of one thread keep their order.
///
/// It is a linked list that always holds one spent node at its front. A thread that pushes first makes its
/// node the last one, which settles the order, and then links the one before to it; so the reader may see the
/// list end early for a moment, at a push in progress.
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

    /// Any thread.
    void Push(T value)
    {
        auto* pNode = new SNode{std::move(value)};
        SNode* pBefore = m_pBack.exchange(pNode, std::memory_order_acq_rel);
        pBefore->pNext.store(pNode, std::memory_order_release);
    }

    /// For the reader. False, and nothing changes, if the queue is empty or the push of its first value has
    /// not ended.
    bool Take(T& value)
    {
        SNode* pNext = m_pFront->pNext.load(std::memory_order_acquire);
        if (!pNext)
            return false;
        value = std::move(pNext->value);
        delete std::exchange(m_pFront, pNext);
        return true;
    }

    /// For the reader. A push that has begun counts.
    bool IsEmpty() const { return m_pBack.load(std::memory_order_acquire) == m_pFront; }

private:
    struct SNode {
        T value{};
        std::atomic<SNode*> pNext{nullptr};
    };

    // Each end has its own cache line.
    alignas(64) SNode* m_pFront = new SNode;
    alignas(64) std::atomic<SNode*> m_pBack{m_pFront};
};
