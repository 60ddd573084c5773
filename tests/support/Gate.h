#pragma once

#include "store/DatabaseManager.h"

#include <future>

/// Keeps the database thread inside an operation until it is opened.
class Gate
{
public:
    explicit Gate(DatabaseManager &db)
    {
        std::promise<void> entered;
        // Its own share of what is waited for: the gate may be gone when the wait begins.
        m_passed =
            db.perform(Urgency::Background, [&entered, opened = m_opened.get_future().share()](Database &) {
                entered.set_value();
                opened.wait();
                return Result<void>();
            });
        entered.get_future().wait();
    }
    void open() { m_opened.set_value(); }

private:
    std::promise<void> m_opened;
    QFuture<Result<void>> m_passed;
};
