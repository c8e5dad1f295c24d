#include "StateStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QThread>
#include <QVariant>

#include <sys/stat.h>

#include <atomic>
#include <utility>

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

} // namespace

// Qt knows it under a name of its own.
class StateStore::Connection
{
public:
    explicit Connection(const QString& aPath) : m_Path(aPath) {}

    ~Connection()
    {
        m_Prepared.clear();
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
        const bool isOpen =
            DriverPresent(aError) && (OpenFile(aError) || (MakeFolder(aError) && OpenFile(aError)));
        m_File = FileAt(m_Path);
        return isOpen;
    }

    // Not from another thread than the one that made it, and not once its file was removed.
    bool IsUsableFor(const QString& aPath) const
    {
        return m_Path == aPath && m_Thread == QThread::currentThreadId() && m_File == FileAt(m_Path);
    }

    // Runs one statement; a value it yields first goes to `aValue`. The table is made when it is missing.
    bool Run(const QString& aStatement, const QVariantList& aArguments, QString& aError,
             QString* aValue = nullptr)
    {
        QSqlError error = Execute(aStatement, aArguments, aValue);
        if (error.databaseText().contains(QLatin1String("no such table"))) {
            error = Execute(kTable, {}, nullptr);
            error = error.isValid() ? error : Execute(aStatement, aArguments, aValue);
        }
        if (error.isValid()) {
            aError = Explain(error);
        }
        return !error.isValid();
    }

private:
    using File = std::pair<dev_t, ino_t>;

    static File FileAt(const QString& aPath)
    {
        struct stat status = {};
        return stat(QFile::encodeName(aPath).constData(), &status) == 0 ? File(status.st_dev, status.st_ino)
                                                                        : File();
    }

    static bool DriverPresent(QString& aError)
    {
        if (QCoreApplication::instance() == nullptr) {
            aError = QStringLiteral("the state store needs a QCoreApplication: create one before opening it");
            return false;
        }
        // To ask takes long, and a driver stays.
        static std::atomic<bool> s_IsThere{false};
        s_IsThere = s_IsThere || QSqlDatabase::isDriverAvailable(QStringLiteral("QSQLITE"));
        if (!s_IsThere) {
            aError = QStringLiteral("Qt's SQLite driver is missing: install the package libqt%1sql%1-sqlite")
                         .arg(QT_VERSION_MAJOR);
        }
        return s_IsThere;
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
        if (!m_Database.open()) {
            aError = Explain(m_Database.lastError());
            return false;
        }
        // A transaction is all or nothing whenever a program ends, as the journal tells the next. It is not
        // flushed to the disk, which only guards against the machine's end: every launch resets the state,
        // and the file is in memory or on its way to be removed.
        return Run(QStringLiteral("PRAGMA synchronous = OFF"), {}, aError);
    }

    QSqlError Execute(const QString& aStatement, const QVariantList& aArguments, QString* aValue)
    {
        auto prepared = m_Prepared.find(aStatement);
        if (prepared == m_Prepared.end()) {
            QSqlQuery query(m_Database);
            if (!query.prepare(aStatement)) {
                return query.lastError();
            }
            prepared = m_Prepared.insert(aStatement, query);
        }
        for (int index = 0; index < aArguments.size(); ++index) {
            prepared->bindValue(index, aArguments[index]);
        }
        if (!prepared->exec()) {
            QSqlError error = prepared->lastError();
            m_Prepared.erase(prepared);
            return error;
        }
        if (aValue != nullptr) {
            *aValue = prepared->next() ? prepared->value(0).toString() : QString();
        }
        prepared->finish(); // gives its lock back
        return {};
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
    QHash<QString, QSqlQuery> m_Prepared; ///< by their text
    Qt::HANDLE m_Thread = QThread::currentThreadId();
    File m_File{};
};

StateStore::StateStore() = default;
StateStore::~StateStore() = default;

bool StateStore::Open(const QString& aPath, QString& aError)
{
    Close();
    m_Path = aPath;
    // A change that is taken back proves that the file can be written.
    bool ok = Connect(aError);
    for (const char* step : {"BEGIN IMMEDIATE", "PRAGMA user_version = 1", "ROLLBACK"}) {
        ok = ok && m_Connection->Run(QLatin1String(step), {}, aError);
    }
    if (!ok) {
        Close();
    }
    return ok;
}

bool StateStore::Save(const QString& aKey, const QString& aValue, QString& aError)
{
    // A null text would be stored as no value.
    const QString text = aValue.isNull() ? QLatin1String("") : aValue;
    return Connect(aError) && m_Connection->Run(kSave, {aKey, text}, aError);
}

bool StateStore::Load(const QString& aKey, QString& aValue, QString& aError)
{
    return Connect(aError) && m_Connection->Run(QStringLiteral("SELECT value FROM state WHERE key = ?"),
                                                {aKey}, aError, &aValue);
}

void StateStore::Close()
{
    m_Path.clear();
}

bool StateStore::Connect(QString& aError)
{
    if (!IsOpen()) {
        aError = kNotOpen;
        return false;
    }
    if (m_Connection != nullptr && m_Connection->IsUsableFor(m_Path)) {
        return true;
    }
    m_Connection = std::make_unique<Connection>(m_Path);
    if (!m_Connection->Open(aError)) {
        m_Connection.reset();
    }
    return m_Connection != nullptr;
}

} // namespace MPL::Detail
