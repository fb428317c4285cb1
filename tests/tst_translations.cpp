#include "program.h"
#include "testmain.h"
#include "testpaths.h"

#include <QXmlStreamReader>

/** The files of the translations against the sources: nothing missing, nothing left over. */
class tst_Translations : public QObject
{
    Q_OBJECT
private slots:
    void complete_data();
    void complete();
    void compiledOnes_data();
    void compiledOnes();
};

/** Where the texts of a folder are translated. */
struct Catalogue
{
    const char *folder;
    const char *name;
};

static constexpr Catalogue catalogues[] = {{"host/src", "nordahost"}, {"unit", "nordaunit"}};
static const QStringList languages = {"en", "de", "fr", "es"};

/** Context and text, with the translation; one that is not finished is empty. */
static QMap<QString, QString> readTranslations(const QString &path)
{
    QFile file(path);
    QMap<QString, QString> found;
    if (!file.open(QIODevice::ReadOnly))
        return found;
    QXmlStreamReader xml(&file);
    QString context;
    QString source;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("source")) {
            source = context + ": " + xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            const bool isFinished = !xml.attributes().hasAttribute("type");
            const QString text = xml.readElementText();
            found.insert(source, isFinished ? text : QString());
        }
    }
    return xml.hasError() ? QMap<QString, QString>() : found;
}

static QString fileOf(const Catalogue &catalogue, const QString &language)
{
    return testpaths::source(
        QStringLiteral("%1/translations/%2_%3.ts").arg(catalogue.folder, catalogue.name, language));
}

/** "%1" and the like, sorted. */
static QStringList placeholders(const QString &text)
{
    static const QRegularExpression mark(QStringLiteral("%L?\\d+|%n|&(?=\\w)"));
    QStringList found;
    for (auto match = mark.globalMatch(text); match.hasNext();)
        found.append(match.next().captured());
    found.sort();
    return found;
}

void tst_Translations::complete_data()
{
    QTest::addColumn<int>("catalogue");
    QTest::addColumn<QString>("language");
    for (int i = 0; i < int(std::size(catalogues)); ++i) {
        for (const QString &language : languages)
            QTest::addRow("%s, %s", catalogues[i].folder, qPrintable(language)) << i << language;
    }
}

void tst_Translations::complete()
{
    QFETCH(int, catalogue);
    QFETCH(QString, language);
    const QTemporaryDir scratch;
    const QString fresh = scratch.filePath("fresh.ts");
    const ProgramResult result =
        runProgram({testpaths::lupdate(), "-silent", "-locations", "none",
                    testpaths::source(QLatin1String(catalogues[catalogue].folder)), "-ts", fresh});
    QVERIFY2(result.exitCode == 0, qPrintable(result.out + result.err));
    const QStringList wanted = readTranslations(fresh).keys();
    QVERIFY(wanted.size() >= 8);

    const QMap<QString, QString> translations =
        readTranslations(fileOf(catalogues[catalogue], language));
    QCOMPARE(translations.keys(), wanted);
    for (auto each = translations.begin(); each != translations.end(); ++each) {
        QVERIFY2(!each.value().trimmed().isEmpty(), qPrintable(each.key()));
        QCOMPARE(placeholders(each.value()), placeholders(each.key().section(": ", 1)));
        if (language == "en")
            QCOMPARE(each.value(), each.key().section(": ", 1));
    }
}

void tst_Translations::compiledOnes_data()
{
    complete_data();
}

/** What is built in is what the file says. */
void tst_Translations::compiledOnes()
{
    QFETCH(int, catalogue);
    QFETCH(QString, language);
    const QString folder = QLatin1String(catalogues[catalogue].folder);
    QTranslator built;
    QVERIFY(built.load(QStringLiteral("%1/%2/%3_%4.qm")
                           .arg(testpaths::buildFolder(), folder,
                                QLatin1String(catalogues[catalogue].name), language)));
    const auto translations = readTranslations(fileOf(catalogues[catalogue], language));
    QVERIFY(!translations.isEmpty());
    for (auto each = translations.begin(); each != translations.end(); ++each) {
        const QByteArray context = each.key().section(": ", 0, 0).toUtf8();
        const QByteArray source = each.key().section(": ", 1).toUtf8();
        QCOMPARE(built.translate(context, source), each.value());
    }
}

NORDA_TEST_MAIN(tst_Translations)
#include "tst_translations.moc"
