#include "app/HelperApplication.h"

#include "app/ApplicationFonts.h"
#include "app/InterfaceFont.h"
#include "app/LaunchOptions.h"
#include "app/LaunchSecret.h"
#include "app/Translations.h"
#include "link/client/MinibarClient.h"
#include "minibar/ApplicationTheme.h"
#include "minibar/RemoteMiniBarWindow.h"
#include "minibar/Theme.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QMessageBox>

namespace {

Q_LOGGING_CATEGORY(lcApp, "tarvinel.app", QtWarningMsg)

constexpr int connectTimeoutMs = 3000;

// Posted, because the link may end before the event loop has begun, when quit() would go unheard.
void quitEventLoop()
{
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
}

} // namespace

void HelperApplication::prepareEnvironment()
{
    LaunchSecret::guard();
    // The bar draws no OpenGL: without the integration the first paint comes sooner and takes a third of the
    // memory.
    if (!qEnvironmentVariableIsSet("QT_XCB_GL_INTEGRATION"))
        qputenv("QT_XCB_GL_INTEGRATION", "none");
    prepareDrawing();
}

void HelperApplication::prepareDrawing()
{
    // Or else a button's icon is drawn at scale 1 and then enlarged.
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    // The theme's style sheets are made for this style; the desktop's would shine through.
    QApplication::setStyle(QStringLiteral("Fusion"));
}

int HelperApplication::run(QApplication& application, int argc, char** argv)
{
    QApplication::setApplicationName(QStringLiteral("TarvinelMiniBar"));
    QApplication::setQuitOnLastWindowClosed(false);
    loadApplicationFonts();
    installTranslations(application);
    useInterfaceFont(tr("Localization"));

    const QStringList arguments = QCoreApplication::arguments();
    HelperLaunchOptions options = parseLaunchOptions(arguments);
    options.token.detach(); // the only copy from now on
    LaunchSecret::blotOutTokens(arguments, argc, argv);
    if (!options.isValid()) {
        tellHowItIsStarted();
        return InvalidOptions;
    }
    return serve(application, options);
}

void HelperApplication::tellHowItIsStarted()
{
    applyTheme(readThemeSetting()); // there is no bar that has done it
    QMessageBox::information(nullptr, QStringLiteral("TarvinelMiniBar"),
                             tr("TarvinelMiniBar is started automatically by Tarvinel."), QMessageBox::Ok);
}

int HelperApplication::serve(QApplication& application, const HelperLaunchOptions& options)
{
    MinibarClient client;
    if (!client.connectToHost(options.server, connectTimeoutMs))
        return NotConnected;

    RemoteMiniBarWindow window;
    wire(application, client, window);
    const bool authSent = client.sendAuth(options.token);
    LaunchSecret::blotOut(options.token);
    if (!authSent)
        return AuthNotSent;
    if (!client.sendReady())
        return ReadyNotSent;
    LaunchSecret::release();
    return QApplication::exec();
}

void HelperApplication::wire(QApplication& application, MinibarClient& client, RemoteMiniBarWindow& window)
{
    using Client = MinibarClient;
    using Window = RemoteMiniBarWindow;

    QObject::connect(&window, &Window::restoreRequested, &client, &Client::sendRestoreRequest);
    QObject::connect(&window, &Window::rfChangeRequested, &client, &Client::setRfEnabled);
    QObject::connect(&window, &Window::centerChangeRequested, &client, &Client::setCenterFrequency);
    QObject::connect(&window, &Window::levelChangeRequested, &client, &Client::setLevel);
    QObject::connect(&window, &Window::sweepChangeRequested, &client, &Client::changeSweep);
    QObject::connect(&window, &Window::modChangeRequested, &client, &Client::changeModulation);

    QObject::connect(&client, &Client::showMiniBarRequested, &window, [&window](QPoint topRight) {
        window.setAnchorTopRight(topRight);
        window.showMiniBar();
    });
    QObject::connect(&client, &Client::hideMiniBarRequested, &window, &Window::hideMiniBar);
    QObject::connect(&client, &Client::snapshotReceived, &window, &Window::applySnapshot);
    QObject::connect(&client, &Client::requestError, &application,
                     [](int requestId, const QString& code, const QString& message) {
                         // Code and message are the peer's words: quoted, so that they stay on one line.
                         qCWarning(lcApp) << "Minibar helper request failed" << requestId << code << message;
                     });
    QObject::connect(&client, &Client::protocolError, &application, [](const QString& message) {
        qCWarning(lcApp).noquote() << "Minibar helper protocol error:" << message;
    });
    QObject::connect(&client, &Client::shutdownRequested, &window, [&window] {
        window.prepareForExit();
        window.close();
        quitEventLoop();
    });
    QObject::connect(&client, &Client::disconnected, &window, [&window] {
        window.prepareForExit();
        quitEventLoop();
    });
}
