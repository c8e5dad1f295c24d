/// The media player's persisted state: texts under keys in an SQLite file that several programs share.
#pragma once

#include <QString>

#include <memory>

namespace MPL::Detail
{

/// Keys of the store. An active source is a parameter text with the pairs service_name and object_path.
inline const QString kStateKeyActiveSource = QStringLiteral("active_source");
inline const QString kStateKeyActiveSourcePlaybackState = QStringLiteral("active_source_playback_state");

/// Between calls no lock is held: other programs can write, and the file or its folder may be removed (the
/// next call makes them again). Functions may be called from any thread, from one at a time. Each blocks for
/// file access, and under half a second more when another program has the file locked. They need a
/// QCoreApplication, which finds the database driver. On failure they return false and set `aError` to one
/// line that says what is wrong and what to do; the stored state is then as it was.
class StateStore
{
public:
    StateStore();
    ~StateStore();

    /// Chooses the file and proves that it can be written; makes it, with its folder, when it is missing.
    bool Open(const QString& aPath, QString& aError);

    /// Stores `aValue` in place of what the key held before: all of it or nothing, whenever a program ends.
    /// It is not flushed to the disk, so the machine's own end may damage the file.
    bool Save(const QString& aKey, const QString& aValue, QString& aError);

    /// Reads the key's value; a key never saved has an empty one. `aValue` is unchanged on failure.
    bool Load(const QString& aKey, QString& aValue, QString& aError);

    bool IsOpen() const { return !m_Path.isEmpty(); }

    /// Keeps the connection, without a lock, for the next Open of the same file.
    void Close();

private:
    class Connection;

    bool Connect(QString& aError);

    QString m_Path;
    std::unique_ptr<Connection> m_Connection;
};

} // namespace MPL::Detail
