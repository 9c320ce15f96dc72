#pragma once

#include <memory>

/// The sign of life of an object that TxHandle follows: a member of it. Costs nothing until somebody follows.
class TxLife
{
public:
    TxLife() = default;
    TxLife(const TxLife &) = delete;
    TxLife &operator=(const TxLife &) = delete;

private:
    template<class Object>
    friend class TxHandle;

    mutable std::shared_ptr<char> m_token;
};

/// A pointer to an engine object (CTxWorkspace, CTxMap, CTxDataset, CTxRecordset) that turns null when the object goes.
///
/// For whoever keeps an object while others may act: across a message, a question or an event. User-interface thread
/// only.
template<class Object>
class TxHandle
{
public:
    TxHandle() = default;
    /// Follows @p object (not owned, may be null), which must live.
    explicit TxHandle(Object *object) : m_object(object)
    {
        if (!object)
            return;
        std::shared_ptr<char> &token = object->m_life.m_token;
        if (!token)
            token = std::make_shared<char>();
        m_token = token;
    }

    /// The object; null when there was none or it has gone.
    Object *get() const { return m_token.expired() ? nullptr : m_object; }

private:
    Object *m_object = nullptr; // not owned, followed only while the token lives
    std::weak_ptr<char> m_token;
};
