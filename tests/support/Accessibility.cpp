#include "support/Accessibility.h"

#include "support/PrivateDisplay.h"
#include "support/Waiting.h"
#include "support/XConnection.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QFile>
#include <QJsonArray>

namespace TestSupport {

// A node's address on the bus: "(so)".
struct NodeReference
{
    QString service;
    QDBusObjectPath path;
};

// One action: "(sss)" of name, description, key binding.
struct ActionFacts
{
    QString name;
    QString description;
    QString keys;
};

QDBusArgument& operator<<(QDBusArgument& argument, const NodeReference& reference)
{
    argument.beginStructure();
    argument << reference.service << reference.path;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NodeReference& reference)
{
    argument.beginStructure();
    argument >> reference.service >> reference.path;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const ActionFacts& action)
{
    argument.beginStructure();
    argument << action.name << action.description << action.keys;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ActionFacts& action)
{
    argument.beginStructure();
    argument >> action.name >> action.description >> action.keys;
    argument.endStructure();
    return argument;
}

} // namespace TestSupport

Q_DECLARE_METATYPE(TestSupport::NodeReference)
Q_DECLARE_METATYPE(TestSupport::ActionFacts)

namespace TestSupport {
namespace {

constexpr int callDeadline = 3000; // ms
constexpr int deepest = 40;        // levels of a tree that are read

// One bus for everything, without activation, so that every process on it is our own child.
constexpr char busConfiguration[] =
    R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

// Debian and its kin keep the registry here; it is not on the search path.
QString registryProgram()
{
    for (const QString& path : {QStringLiteral("/usr/libexec/at-spi2-registryd"),
                                QStringLiteral("/usr/lib/at-spi2-core/at-spi2-registryd")})
        if (QFile::exists(path))
            return path;
    return QStringLiteral("at-spi2-registryd");
}

QString interface(const char* name)
{
    return QStringLiteral("org.a11y.atspi.") + QLatin1String(name);
}

QVariantList call(const QDBusConnection& bus, const NodeReference& node, const QString& interfaceName,
                  const char* method, const QVariantList& arguments = {})
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(node.service, node.path.path(), interfaceName, QLatin1String(method));
    message.setArguments(arguments);
    const QDBusMessage reply = bus.call(message, QDBus::Block, callDeadline);
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments() : QVariantList();
}

QVariant property(const QDBusConnection& bus, const NodeReference& node, const char* interfaceName,
                  const char* name)
{
    const QVariantList reply = call(bus, node, QStringLiteral("org.freedesktop.DBus.Properties"), "Get",
                                    {interface(interfaceName), QLatin1String(name)});
    return reply.isEmpty() ? QVariant() : reply.first().value<QDBusVariant>().variant();
}

QVector<NodeReference> childrenOf(const QDBusConnection& bus, const NodeReference& node)
{
    const QVariantList reply = call(bus, node, interface("Accessible"), "GetChildren");
    return reply.isEmpty() ? QVector<NodeReference>() : qdbus_cast<QVector<NodeReference>>(reply.first());
}

QRect extentsOf(const QDBusConnection& bus, const NodeReference& node)
{
    constexpr uint screenCoordinates = 0; // Qt 5.15 knows no others
    const QVariantList reply = call(bus, node, interface("Component"), "GetExtents", {screenCoordinates});
    return reply.isEmpty() ? QRect() : qdbus_cast<QRect>(reply.first());
}

quint64 statesOf(const QDBusConnection& bus, const NodeReference& node)
{
    const QVariantList reply = call(bus, node, interface("Accessible"), "GetState");
    const auto words = reply.isEmpty() ? QVector<uint>() : qdbus_cast<QVector<uint>>(reply.first());
    return words.size() < 2 ? 0 : quint64(words[1]) << 32 | words[0];
}

void translate(AccessibleNode& node, const QPoint& offset)
{
    node.extents.translate(offset);
    for (AccessibleNode& child : node.children)
        translate(child, offset);
}

AccessibleNode withWindowCoordinates(AccessibleNode application)
{
    for (AccessibleNode& window : application.children)
        translate(window, -window.extents.topLeft());
    return application;
}

NodeReference registryRoot()
{
    return {interface("Registry"), QDBusObjectPath(QStringLiteral("/org/a11y/atspi/accessible/root"))};
}

} // namespace

Accessibility::Accessibility(const PrivateDisplay& display)
    : m_display(display)
    , m_connection(QString())
{
    qDBusRegisterMetaType<NodeReference>();
    qDBusRegisterMetaType<QVector<NodeReference>>();
    qDBusRegisterMetaType<ActionFacts>();
    qDBusRegisterMetaType<QVector<ActionFacts>>();
    qDBusRegisterMetaType<QVector<uint>>();
}

Accessibility::~Accessibility()
{
    const QString name = m_connection.name();
    m_connection = QDBusConnection(QString());
    if (!name.isEmpty())
        QDBusConnection::disconnectFromBus(name);
    m_registry.end();
    m_bus.end();
}

bool Accessibility::start()
{
    if (!startBus())
        return false;
    QProcessEnvironment own = environment();
    own.insert(QStringLiteral("AT_SPI_BUS_ADDRESS"), m_address);
    m_registry.setProcessEnvironment(own);
    m_registry.start(registryProgram(), QStringList());
    const bool ready = waitUntil([this] {
        return m_connection.interface()->isServiceRegistered(registryRoot().service) ||
               m_registry.state() == QProcess::NotRunning;
    });
    if (!ready || m_registry.state() == QProcess::NotRunning) {
        m_error = QStringLiteral("no accessibility registry: ") +
                  QString::fromLocal8Bit(m_registry.readAllStandardError());
        return false;
    }
    return true;
}

bool Accessibility::startBus()
{
    QFile configuration(m_folder.filePath(QStringLiteral("bus.conf")));
    const QByteArray content = QString::fromLatin1(busConfiguration).arg(m_folder.path()).toUtf8();
    if (!configuration.open(QIODevice::WriteOnly) || configuration.write(content) < 0) {
        m_error = configuration.errorString();
        return false;
    }
    configuration.close();
    m_bus.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--nofork"), QStringLiteral("--print-address"),
                                                QStringLiteral("--config-file=") + configuration.fileName()});
    QByteArray address;
    const bool told = waitUntil([&] {
        address += m_bus.readAllStandardOutput();
        return address.endsWith('\n') || m_bus.state() == QProcess::NotRunning;
    });
    m_address = QString::fromLatin1(address.trimmed());
    if (told && !m_address.isEmpty())
        m_connection = QDBusConnection::connectToBus(m_address, m_address);
    if (!m_connection.isConnected()) {
        m_error = QStringLiteral("no bus: ") + QString::fromLocal8Bit(m_bus.readAllStandardError());
        return false;
    }
    // Programs find the bus by this property of the root window. Asking the session bus for it instead is a
    // race that Qt 5.15 loses when the answer comes too soon.
    XConnection(m_display.name()).setRootText("AT_SPI_BUS", m_address.toLatin1());
    return true;
}

QProcessEnvironment Accessibility::environment() const
{
    QProcessEnvironment environment = m_display.environment();
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_address);
    return environment;
}

std::optional<AccessibleNode> Accessibility::application(qint64 processId) const
{
    const QVector<NodeReference> applications = childrenOf(m_connection, registryRoot());
    for (const NodeReference& candidate : applications)
        if (m_connection.interface()->servicePid(candidate.service).value() == processId)
            return withWindowCoordinates(read(candidate.service, candidate.path.path(), 0));
    return std::nullopt;
}

AccessibleNode Accessibility::readAlone(const QString& service, const QString& path) const
{
    const NodeReference reference{service, QDBusObjectPath(path)};
    AccessibleNode node;
    node.service = service;
    node.path = path;
    node.role = call(m_connection, reference, interface("Accessible"), "GetRoleName").value(0).toString();
    node.name = property(m_connection, reference, "Accessible", "Name").toString();
    node.description = property(m_connection, reference, "Accessible", "Description").toString();
    node.states = statesOf(m_connection, reference);
    node.extents = extentsOf(m_connection, reference);
    const auto interfaces =
        call(m_connection, reference, interface("Accessible"), "GetInterfaces").value(0).toStringList();
    if (interfaces.contains(interface("Value")))
        node.value = property(m_connection, reference, "Value", "CurrentValue").toDouble();
    if (interfaces.contains(interface("Text")))
        node.text = call(m_connection, reference, interface("Text"), "GetText", {0, -1}).value(0).toString();
    return node;
}

AccessibleNode Accessibility::read(const QString& service, const QString& path, int depth) const
{
    AccessibleNode node = readAlone(service, path);
    if (depth < deepest) {
        const QVector<NodeReference> children =
            childrenOf(m_connection, NodeReference{service, QDBusObjectPath(path)});
        for (const NodeReference& child : children)
            node.children += read(child.service, child.path.path(), depth + 1);
    }
    return node;
}

AccessibleNode Accessibility::reread(const AccessibleNode& node) const
{
    return readAlone(node.service, node.path);
}

std::optional<AccessibleNode>
Accessibility::waitForNode(qint64 processId, const std::function<bool(const AccessibleNode&)>& wanted) const
{
    std::optional<AccessibleNode> found;
    const bool seen = waitUntil([&] {
        const auto tree = application(processId);
        const auto* node =
            tree ? findNode(*tree,
                            [&](const AccessibleNode& candidate) {
                                return candidate.has(AccessibleNode::Showing) && wanted(candidate);
                            })
                 : nullptr;
        if (node)
            found = *node;
        return node != nullptr;
    });
    return seen ? found : std::nullopt;
}

std::optional<AccessibleNode> Accessibility::waitForNode(qint64 processId, const QString& role,
                                                         const QString& name) const
{
    return waitForNode(processId,
                       [&](const AccessibleNode& node) { return node.role == role && node.name == name; });
}

bool Accessibility::act(const AccessibleNode& node, const QString& action) const
{
    const NodeReference reference{node.service, QDBusObjectPath(node.path)};
    const QVariantList reply = call(m_connection, reference, interface("Action"), "GetActions");
    const auto actions =
        reply.isEmpty() ? QVector<ActionFacts>() : qdbus_cast<QVector<ActionFacts>>(reply.first());
    for (int index = 0; index < actions.size(); ++index)
        if (actions[index].name == action)
            return call(m_connection, reference, interface("Action"), "DoAction", {index}).value(0).toBool();
    return false;
}

const AccessibleNode* findNode(const AccessibleNode& tree,
                               const std::function<bool(const AccessibleNode&)>& wanted)
{
    if (wanted(tree))
        return &tree;
    for (const AccessibleNode& child : tree.children)
        if (const AccessibleNode* found = findNode(child, wanted))
            return found;
    return nullptr;
}

QJsonObject toJson(const AccessibleNode& tree)
{
    QJsonArray children;
    for (const AccessibleNode& child : tree.children)
        children += toJson(child);
    const QRect& area = tree.extents;
    QJsonObject object{
        {QStringLiteral("role"), tree.role},
        {QStringLiteral("name"), tree.name},
        {QStringLiteral("extents"), QJsonArray{area.x(), area.y(), area.width(), area.height()}},
        {QStringLiteral("showing"), tree.has(AccessibleNode::Showing)}};
    if (!tree.text.isEmpty())
        object.insert(QStringLiteral("text"), tree.text);
    if (!children.isEmpty())
        object.insert(QStringLiteral("children"), children);
    return object;
}

} // namespace TestSupport
