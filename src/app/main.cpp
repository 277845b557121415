#include "app/HelperApplication.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    HelperApplication::prepareEnvironment();
    QApplication application(argc, argv);
    return HelperApplication::run(application, argc, argv);
}
