#pragma once

#include <QByteArray>
#include <QFile>
#include <QLocale>
#include <QProcess>
#include <QTemporaryDir>
#include <clocale>
#include <cstdio>

// While it lives, Qt's default locale and the C library's both write "1.234,5", as on a German desktop. The C
// library's locale is compiled into a temporary folder, so that no language pack is needed.
class CommaLocale
{
public:
    CommaLocale()
    {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QFile source(m_folder.filePath(QStringLiteral("source")));
        if (source.open(QIODevice::WriteOnly)) {
            source.write(
                "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \".\"\ngrouping 3;3\nEND LC_NUMERIC\n");
            source.close();
        }
        QProcess compiler; // it warns of the missing categories and fills them in
        compiler.start(QStringLiteral("localedef"),
                       {QStringLiteral("--force"), QStringLiteral("--inputfile"), source.fileName(),
                        QStringLiteral("--charmap"), QStringLiteral("ANSI_X3.4-1968"),
                        m_folder.filePath(QStringLiteral("comma"))});
        compiler.waitForFinished();
        qputenv("LOCPATH", QFile::encodeName(m_folder.path()));
        std::setlocale(LC_NUMERIC, "comma");
    }

    ~CommaLocale()
    {
        std::setlocale(LC_NUMERIC, m_cLocale.constData());
        qunsetenv("LOCPATH");
        QLocale::setDefault(m_qtLocale);
    }

    Q_DISABLE_COPY_MOVE(CommaLocale)

    // Whether Qt and the C library really write commas now.
    [[nodiscard]] static bool isActive()
    {
        char text[8] = {};
        std::snprintf(text, sizeof text, "%.1f", 1.5);
        return QByteArray(text) == "1,5" && QLocale().toString(1234.5, 'f', 1) == QLatin1String("1.234,5");
    }

private:
    QLocale m_qtLocale;
    QByteArray m_cLocale = std::setlocale(LC_NUMERIC, nullptr);
    QTemporaryDir m_folder;
};
