#include "StateStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <atomic>

namespace MPL::Detail
{

namespace
{

const QString kNotOpen = QStringLiteral("the state store is not open: open it before use");

const QString kTable =
    QStringLiteral("CREATE TABLE IF NOT EXISTS state (key TEXT PRIMARY KEY, value TEXT NOT NULL)");
// A value that is there already needs no change of the file, and so no flush.
const QString kSave = QStringLiteral("INSERT INTO state VALUES (?, ?) ON CONFLICT (key) DO UPDATE "
                                     "SET value = excluded.value WHERE value <> excluded.value");

// What SQLite calls SQLITE_BUSY and SQLITE_NOTADB.
constexpr int kSqliteBusy = 5;
constexpr int kSqliteNotADatabase = 26;

// A connection belongs to the thread that made it, so each operation makes its own, under a name of its own.
class Connection
{
public:
    explicit Connection(const QString& aPath) : m_Path(aPath) {}

    ~Connection()
    {
        if (!m_Database.isValid()) {
            return;
        }
        const QString name = m_Database.connectionName();
        m_Database = QSqlDatabase();
        QSqlDatabase::removeDatabase(name);
    }

    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    bool Open(QString& aError)
    {
        return DriverPresent(aError) && (OpenFile(aError) || (MakeFolder(aError) && OpenFile(aError)));
    }

    // Runs one statement; a value it yields first goes to `aValue`. The table is made when it is missing.
    bool Run(const QString& aStatement, const QVariantList& aArguments, QString& aError,
             QString* aValue = nullptr)
    {
        QSqlQuery query(m_Database);
        bool ok = Execute(query, aStatement, aArguments);
        if (!ok && query.lastError().databaseText().contains(QLatin1String("no such table"))) {
            ok = Execute(query, kTable, {}) && Execute(query, aStatement, aArguments);
        }
        if (!ok) {
            aError = Explain(query.lastError());
        } else if (aValue != nullptr) {
            *aValue = query.next() ? query.value(0).toString() : QString();
        }
        return ok;
    }

private:
    static bool DriverPresent(QString& aError)
    {
        if (QCoreApplication::instance() == nullptr) {
            aError = QStringLiteral("the state store needs a QCoreApplication: create one before opening it");
            return false;
        }
        if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QSQLITE"))) {
            aError = QStringLiteral("Qt's SQLite driver is missing: install the package libqt5sql5-sqlite");
            return false;
        }
        return true;
    }

    bool MakeFolder(QString& aError) const
    {
        const QString folder = QFileInfo(m_Path).absolutePath();
        if (QDir().mkpath(folder)) {
            return true;
        }
        aError =
            QStringLiteral("can't make the folder %1: check its parents and their permissions").arg(folder);
        return false;
    }

    bool OpenFile(QString& aError)
    {
        static std::atomic<unsigned int> s_Count{0};
        if (!m_Database.isValid()) {
            m_Database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"),
                                                   QStringLiteral("MPL_StateStore_%1").arg(++s_Count));
            m_Database.setDatabaseName(m_Path);
            m_Database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=400"));
        }
        if (m_Database.open()) {
            return true;
        }
        aError = Explain(m_Database.lastError());
        return false;
    }

    static bool Execute(QSqlQuery& aQuery, const QString& aStatement, const QVariantList& aArguments)
    {
        const bool prepared = aQuery.prepare(aStatement);
        for (const QVariant& argument : aArguments) {
            aQuery.addBindValue(argument);
        }
        return prepared && aQuery.exec();
    }

    QString Explain(const QSqlError& aSqlError) const
    {
        // The low byte is the error, the rest says more about it.
        switch (aSqlError.nativeErrorCode().toInt() & 0xff) {
        case kSqliteBusy:
            return QStringLiteral("%1 is locked by another program: wait for it or end it").arg(m_Path);
        case kSqliteNotADatabase:
            return QStringLiteral("%1 is not an SQLite database: move it away").arg(m_Path);
        default:
            return QStringLiteral("can't use %1 (%2): check that the file and its folder can be written")
                .arg(m_Path, aSqlError.databaseText().simplified());
        }
    }

    QString m_Path;
    QSqlDatabase m_Database;
};

} // namespace

bool StateStore::Open(const QString& aPath, QString& aError)
{
    Close();
    Connection connection(aPath);
    // A change that is taken back proves that the file can be written, and flushes nothing.
    bool ok = connection.Open(aError);
    for (const char* step : {"BEGIN IMMEDIATE", "PRAGMA user_version = 1", "ROLLBACK"}) {
        ok = ok && connection.Run(QLatin1String(step), {}, aError);
    }
    m_Path = ok ? aPath : QString();
    return ok;
}

bool StateStore::Save(const QString& aKey, const QString& aValue, QString& aError)
{
    if (!IsOpen()) {
        aError = kNotOpen;
        return false;
    }
    Connection connection(m_Path);
    // A null text would be stored as no value.
    const QString text = aValue.isNull() ? QLatin1String("") : aValue;
    return connection.Open(aError) && connection.Run(kSave, {aKey, text}, aError);
}

bool StateStore::Load(const QString& aKey, QString& aValue, QString& aError) const
{
    if (!IsOpen()) {
        aError = kNotOpen;
        return false;
    }
    Connection connection(m_Path);
    return connection.Open(aError) &&
           connection.Run(QStringLiteral("SELECT value FROM state WHERE key = ?"), {aKey}, aError, &aValue);
}

} // namespace MPL::Detail
