// The media player's configuration, and the login that is written into it. The input's first two lines are
// the login.
#include "Fuzzing.h"
#include "Journal.h"
#include "PlatformDoubles.h"
#include "environment/Json.h"
#include <MPL_TestEnvironment.h>

using MPL::Doubles::World;

namespace
{

const QString kRead = "/opt/talvex/etc/mplConfig.json";
const QString kWritten = "/var/talvex/media-player/mplUnitConfig.json";

// The login's text of that name; null when there is none.
const char* LoginText(const cJSON* aRoot, const char* aName)
{
    const cJSON* node = aRoot;
    for (const char* key : {"config", "pandora", "login_config", aName}) {
        node = cJSON_GetObjectItemCaseSensitive(node, key);
    }
    return cJSON_GetStringValue(node);
}

void ExpectLogin(const QString& aUserName, const QString& aPassword)
{
    fuzz::Promise(World().files.contains(kWritten), "success has written the file");
    const MPL::Detail::JsonTree before = MPL::Detail::ParseJson(World().files[kRead]);
    const MPL::Detail::JsonTree after = MPL::Detail::ParseJson(World().files[kWritten]);
    fuzz::Promise(after != nullptr, "what is written is JSON");
    for (const auto& [name, value] : {std::pair("user_name", aUserName), std::pair("password", aPassword)}) {
        if (LoginText(before.get(), name) != nullptr) {
            fuzz::Promise(QString::fromUtf8(LoginText(after.get(), name)) == value, name);
        }
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* aData, size_t aSize)
{
    fuzz::SilenceLog();
    const QString input = fuzz::ToText(aData, aSize).remove(QChar::Null);
    const QString userName = input.section('\n', 0, 0);
    const QString password = input.section('\n', 1, 1);
    World() = {};
    World().files[kRead] = input.section('\n', 2);
    MPL::Doubles::ClearNotes();
    MPL_TestEnvironment::SetPandoraCredentials(userName, password);
    if (MPL_TestEnvironment::AddPandoraLogin()) {
        ExpectLogin(QString::fromLocal8Bit(userName.toLocal8Bit()),
                    QString::fromLocal8Bit(password.toLocal8Bit()));
    } else {
        fuzz::Promise(World().files.size() == 1, "a failure writes nothing");
    }
    return 0;
}
