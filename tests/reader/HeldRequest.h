#pragma once

#include "reader/ReaderDocument.h"

#include <future>
#include <memory>

/// Keeps the document's thread in a request until it is let go.
class HeldRequest
{
public:
    explicit HeldRequest(ReaderDocument &document)
    {
        auto held = m_held;
        auto release = m_release.get_future().share();
        answer = document.ask(ReaderDocument::Priority::Visible, {},
                              [held, release](PDFDocument &, std::stop_token) {
                                  held->set_value();
                                  release.wait();
                                  return Result<void>();
                              });
        m_held->get_future().wait();
    }
    void letGo() { m_release.set_value(); }

    QFuture<Result<void>> answer;

private:
    std::shared_ptr<std::promise<void>> m_held = std::make_shared<std::promise<void>>();
    std::promise<void> m_release;
};
