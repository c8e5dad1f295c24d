#include "Files.h"

#include <MPL_TestEnvironment.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUrlQuery>

namespace chaos
{
namespace
{

constexpr const char* kConnection = "the witness";

// Of the database: its state, and the active source in it.
struct DatabaseSeen {
    QString state;
    QString source;
};

QString StateAfter(const QSqlError& aError)
{
    constexpr int kBusy = 5; // SQLite's number; the rest of the code says more about it
    return (aError.nativeErrorCode().toInt() & 0xff) == kBusy ? QStringLiteral("locked")
                                                              : QStringLiteral("damaged");
}

QString ServiceIn(const QString& aSource)
{
    QUrlQuery pairs;
    pairs.setQueryDelimiters(QLatin1Char('='), QLatin1Char(';'));
    pairs.setQuery(aSource);
    return pairs.queryItemValue(QStringLiteral("service_name"), QUrl::FullyDecoded);
}

DatabaseSeen Check(const QSqlDatabase& aDatabase)
{
    QSqlQuery query(aDatabase);
    if (!query.exec(QStringLiteral("PRAGMA integrity_check")) || !query.next()) {
        return {StateAfter(query.lastError()), {}};
    }
    if (query.value(0).toString() != QLatin1String("ok")) {
        return {QStringLiteral("damaged"), {}};
    }
    // Without a table nothing is stored yet.
    query.exec(QStringLiteral("SELECT value FROM state WHERE key = 'active_source'"));
    return {QStringLiteral("whole"), query.next() ? ServiceIn(query.value(0).toString()) : QString()};
}

DatabaseSeen LookAtDatabase()
{
    if (!QFile::exists(kMPLDataManagerDb)) {
        return {QStringLiteral("absent"), {}};
    }
    DatabaseSeen seen{QStringLiteral("damaged"), {}};
    {
        QSqlDatabase database =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QLatin1String(kConnection));
        database.setDatabaseName(kMPLDataManagerDb);
        database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=0"));
        if (database.open()) {
            seen = Check(database);
        }
    }
    QSqlDatabase::removeDatabase(QLatin1String(kConnection));
    return seen;
}

QString LookAtConfiguration()
{
    QFile file(MPL_TEST_MEDIA_PLAYER_DIRECTORY + QStringLiteral("mplUnitConfig.json"));
    if (!file.open(QIODevice::ReadOnly)) {
        return QStringLiteral("absent");
    }
    const QJsonDocument whole = QJsonDocument::fromJson(file.readAll());
    const QJsonValue login =
        whole[QStringLiteral("config")][QStringLiteral("pandora")][QStringLiteral("login_config")];
    return login.isObject() ? login[QStringLiteral("user_name")].toString() : QStringLiteral("half");
}

QByteArray ReadAll(const QString& aPath)
{
    QFile file(aPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

void LookAtFiles(Moment& aMoment)
{
    const DatabaseSeen database = LookAtDatabase();
    aMoment.database = database.state;
    aMoment.storedSource = database.source;
    aMoment.configuration = LookAtConfiguration();
    const QDir folder(MPL_TestEnvironment::m_EnvironmentDirectory);
    aMoment.files = folder.exists() ? static_cast<int>(folder.entryList(QDir::Files).size()) : -1;
}

QString CompareCopy(const QString& aOriginal, const QString& aCopy)
{
    if (!QFile::exists(aCopy)) {
        return QStringLiteral("absent");
    }
    return ReadAll(aOriginal) == ReadAll(aCopy) ? QStringLiteral("whole") : QStringLiteral("half");
}

} // namespace chaos
