#include "Faults.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

namespace sim
{
namespace
{

// A misspelt program would silently run without its faults, so the file may only name these.
bool IsProgram(const QString& name)
{
    static const QStringList programs{QStringLiteral("media_manager"),
                                      QStringLiteral("media_mme"),
                                      QStringLiteral("media_source_apple"),
                                      QStringLiteral("media_source_mass_storage"),
                                      QStringLiteral("media_source_pandora"),
                                      QStringLiteral("media_source_disc"),
                                      QStringLiteral("media_source_spotify"),
                                      QStringLiteral("media_source_btmedia"),
                                      QStringLiteral("test_media_source"),
                                      QStringLiteral("recognition-server"),
                                      QStringLiteral("hmi_main"),
                                      QStringLiteral("hmi_cluster"),
                                      QStringLiteral("audio-tuner-manager"),
                                      QStringLiteral("tuner-device-manager")};
    return programs.contains(name);
}

bool ReadNumber(const QJsonValue& value, int& number)
{
    number = value.toInt(-1);
    return number >= 0;
}

bool ReadFlag(const QJsonValue& value, bool& flag)
{
    flag = value.toBool();
    return value.isBool();
}

bool ReadReplies(const QJsonValue& value, QHash<QString, ReplyFault>& replies)
{
    static const QHash<QString, ReplyFault> words{
        {QStringLiteral("error"), ReplyFault::Error},
        {QStringLiteral("never"), ReplyFault::Never},
        {QStringLiteral("wrong_signature"), ReplyFault::WrongSignature},
        {QStringLiteral("signal_first"), ReplyFault::SignalFirst},
        {QStringLiteral("die"), ReplyFault::Die}};
    if (!value.isObject()) {
        return false;
    }
    const QJsonObject object = value.toObject();
    for (auto reply = object.begin(); reply != object.end(); ++reply) {
        const auto word = words.find(reply.value().toString());
        if (word == words.end() || !reply.key().contains(QLatin1Char('.'))) {
            return false;
        }
        replies.insert(reply.key(), *word);
    }
    return true;
}

bool ReadFault(const QString& name, const QJsonValue& value, FaultPlan& plan)
{
    if (name == QLatin1String("start_delay_ms")) {
        return ReadNumber(value, plan.startDelayMs);
    }
    if (name == QLatin1String("never_own_name")) {
        return ReadFlag(value, plan.neverOwnName);
    }
    if (name == QLatin1String("manager_objects")) {
        return ReadNumber(value, plan.managerObjects);
    }
    if (name == QLatin1String("ignore_sigterm")) {
        return ReadFlag(value, plan.ignoreSigterm);
    }
    if (name == QLatin1String("crash_after_ms")) {
        return ReadNumber(value, plan.crashAfterMs.emplace());
    }
    return name == QLatin1String("replies") && ReadReplies(value, plan.replies);
}

bool ReadProgram(const QString& program, const QJsonValue& value, FaultPlan& plan, QString& error)
{
    if (!IsProgram(program)) {
        error = QStringLiteral("\"%1\" is no program of the simulated stack").arg(program);
        return false;
    }
    if (!value.isObject()) {
        error = QStringLiteral("the faults of \"%1\" are no object").arg(program);
        return false;
    }
    const QJsonObject faults = value.toObject();
    for (auto fault = faults.begin(); fault != faults.end(); ++fault) {
        if (!ReadFault(fault.key(), fault.value(), plan)) {
            error = QStringLiteral("\"%1\" of \"%2\" is no known fault or has a wrong value")
                        .arg(fault.key(), program);
            return false;
        }
    }
    return true;
}

} // namespace

bool FaultPlan::Load(const QString& path, const QString& program, FaultPlan& plan, QString& error)
{
    QFile file(path);
    if (!file.exists()) {
        return true;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        error = file.errorString();
        return false;
    }
    QJsonParseError parsing{};
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &parsing);
    if (parsing.error != QJsonParseError::NoError) {
        error = QStringLiteral("byte %1: %2").arg(parsing.offset).arg(parsing.errorString());
        return false;
    }
    const QJsonValue programs = document.object().value(QLatin1String("programs"));
    if (!programs.isObject()) {
        error = QStringLiteral("there is no object \"programs\"");
        return false;
    }
    const QJsonObject entries = programs.toObject();
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        FaultPlan ofAnother;
        FaultPlan& target = entry.key() == program ? plan : ofAnother;
        if (!ReadProgram(entry.key(), entry.value(), target, error)) {
            return false;
        }
    }
    return true;
}

ReplyFault FaultPlan::OfMethod(const QString& interfaceName, const QString& method) const
{
    return replies.value(interfaceName + QLatin1Char('.') + method, ReplyFault::None);
}

} // namespace sim
