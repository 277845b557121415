#pragma once

#include "support/ChildProcess.h"

#include <QDBusConnection>
#include <QJsonObject>
#include <QProcessEnvironment>
#include <QRect>
#include <QTemporaryDir>
#include <QVector>
#include <functional>
#include <optional>

namespace TestSupport {

class PrivateDisplay;

// One node of a program's accessibility tree as it was when it was read.
struct AccessibleNode
{
    QString service; // bus name and object path address the node for actions
    QString path;
    QString role; // in AT-SPI's words: "push button", "label", "dialog"
    QString name;
    QString description;
    QString text;                // of an editable field
    std::optional<double> value; // of a slider or spin box
    QRect extents;      // in pixels from its window's corner: where Qt believes a framed window to be is not
                        // reliable
    quint64 states = 0; // AT-SPI's state bits
    QVector<AccessibleNode> children;

    // Bits of `states`, numbered by the AT-SPI protocol.
    enum State {
        Checked = 4,
        Enabled = 8,
        Focused = 12,
        Pressed = 20,
        Sensitive = 24,
        Showing = 25,
        Visible = 30
    };
    [[nodiscard]] bool has(State state) const { return (states >> state & 1U) != 0; }
};

// An accessibility bus of our own and the reader of what programs say on it, as a screen reader would.
// Programs must run on a display (Qt's offscreen platform has no bridge) with the environment of extend().
class Accessibility final
{
public:
    explicit Accessibility(const PrivateDisplay& display);
    ~Accessibility();
    Q_DISABLE_COPY(Accessibility)

    // The bus and its registry are up; errorString() says why not.
    [[nodiscard]] bool start();
    [[nodiscard]] QString errorString() const { return m_error; }
    // For programs that are to appear on this bus and on the display.
    [[nodiscard]] QProcessEnvironment environment() const;

    // The tree of the process's application, read now; nothing while it is not on the bus.
    [[nodiscard]] std::optional<AccessibleNode> application(qint64 processId) const;
    // Waits for the first node of the process, in depth-first order, that is showing and that `wanted`
    // accepts.
    [[nodiscard]] std::optional<AccessibleNode>
    waitForNode(qint64 processId, const std::function<bool(const AccessibleNode&)>& wanted) const;
    [[nodiscard]] std::optional<AccessibleNode> waitForNode(qint64 processId, const QString& role,
                                                            const QString& name) const;
    // The node as it is now, without its children; extents are from where the node's coordinates begin.
    // Much cheaper than the tree.
    [[nodiscard]] AccessibleNode reread(const AccessibleNode& node) const;
    // Does the node's action of this name ("Press"); false if it has none.
    [[nodiscard]] bool act(const AccessibleNode& node, const QString& action) const;

private:
    [[nodiscard]] bool startBus();
    [[nodiscard]] AccessibleNode read(const QString& service, const QString& path, int depth) const;
    [[nodiscard]] AccessibleNode readAlone(const QString& service, const QString& path) const;

    const PrivateDisplay& m_display;
    QTemporaryDir m_folder;
    ChildProcess m_bus;
    ChildProcess m_registry;
    QDBusConnection m_connection;
    QString m_address;
    QString m_error;
};

// The first node, in depth-first order, that `wanted` accepts; nullptr if there is none.
[[nodiscard]] const AccessibleNode* findNode(const AccessibleNode& tree,
                                             const std::function<bool(const AccessibleNode&)>& wanted);
// The whole tree, for a failing test's message.
[[nodiscard]] QJsonObject toJson(const AccessibleNode& tree);

} // namespace TestSupport
