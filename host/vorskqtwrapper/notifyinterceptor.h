// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <atomic>
#include <memory>
#include <vector>

QT_BEGIN_NAMESPACE
class QCoreApplication;
class QEvent;
class QObject;
QT_END_NAMESPACE

namespace VorskHost {

/**
 * Puts a function in front of QCoreApplication::notify() of one application object, by giving the
 * object a copy of its virtual table in which that one entry is exchanged. Nothing else about the
 * object changes: the class's own table is untouched, casts and type information work.
 *
 * Constructors and destructors of the application's class set the object's table anew, which takes
 * the function away again; isAttached() tells.
 */
class NotifyInterceptor {
public:
    using Notify = bool (*)(QCoreApplication*, QObject*, QEvent*);

    NotifyInterceptor() = default;
    Q_DISABLE_COPY(NotifyInterceptor)

    /**
     * False, and nothing changes, when the object's table does not lie in a loaded library or
     * program, as after somebody else did the same.
     */
    bool attach(QCoreApplication* application, Notify replacement);

    /** For tests, which use one application again: gives the object back the table that it had, if
     * it still has ours. */
    void detach(QCoreApplication* application);

    bool isAttached(const QCoreApplication* application) const {
        return m_ours != nullptr && *reinterpret_cast<void* const* const*>(application) == m_ours;
    }

    /** What the replacement calls to go on; may be called on any thread. */
    Notify original() const { return m_original.load(std::memory_order_acquire); }

private:
    std::atomic<Notify> m_original{nullptr};
    void* const* m_ours = nullptr;
    void* const* m_theirs = nullptr;
    /** All tables that were ever handed out: another thread may be about to read one. */
    std::vector<std::unique_ptr<void*[]>> m_tables;
};

} // namespace VorskHost
