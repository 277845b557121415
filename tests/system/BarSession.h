#pragma once

#include "support/FakeMain.h"
#include "support/HelperProcess.h"
#include "system/BarView.h"

// A real helper on a real display, with a fake main process at the other end of its socket.
class BarSession final : public BarView
{
public:
    static constexpr QPoint usualAnchor = {900, 100}; // top right corner of the bar

    // Both must outlive the session.
    BarSession(const TestSupport::PrivateDisplay& display, const TestSupport::Accessibility& accessibility,
               const QString& program = TestSupport::helperPath());

    // The helper is connected; no bar yet.
    [[nodiscard]] bool connect();
    // The bar is shown collapsed, at an anchor or, with a negative x, where the helper likes.
    [[nodiscard]] bool begin(const QPoint& anchor = usualAnchor);

    [[nodiscard]] TestSupport::FakeMain& main() { return m_main; }
    [[nodiscard]] TestSupport::HelperProcess& helper() { return m_helper; }
    [[nodiscard]] const TestSupport::HelperProcess& helper() const { return m_helper; }

private:
    TestSupport::FakeMain m_main;
    TestSupport::HelperProcess m_helper;
};
