// The test configuration with its login.
#include "Constants.h"
#include "Json.h"
#include <MPL_TestEnvironment.h>
#include <MPL_Utils.h>

#include <QDebug>

namespace
{

struct TextDeleter {
    void operator()(char* aText) const { cJSON_free(aText); }
};

// Lends a node another string value for as long as it lives. The node's own value is back in place before the
// tree is released, so the tree frees what it owns and nothing else, whatever type the node is of.
class BorrowedValue
{
public:
    BorrowedValue(cJSON* aNode, const QString& aValue)
        : m_Node(aNode), m_Own(aNode->valuestring), m_Value(aValue.toLocal8Bit())
    {
        m_Node->valuestring = m_Value.data();
    }
    ~BorrowedValue() { m_Node->valuestring = m_Own; }

private:
    Q_DISABLE_COPY(BorrowedValue)

    cJSON* m_Node;
    char* m_Own;
    QByteArray m_Value;
};

cJSON* Member(const cJSON* aObject, const QString& aKey)
{
    return cJSON_GetObjectItemCaseSensitive(aObject, aKey.toUtf8().constData());
}

// Null, with a log line, when the way to the login ends early.
cJSON* FindLoginConfig(cJSON* aRoot)
{
    cJSON* node = aRoot;
    for (const QString& key :
         {MPL_TEST_CONFIG_KEY_CONFIG, MPL_TEST_CONFIG_KEY_PANDORA, MPL_TEST_CONFIG_KEY_LOGIN_CONFIG}) {
        node = Member(node, key);
        if (node == nullptr) {
            qCritical() << "MPL_TestEnvironment::AddPandoraLogin - could not find node" << key;
            return nullptr;
        }
    }
    return node;
}

QString PrintWithLogin(const cJSON* aRoot, cJSON* aUserName, cJSON* aPassword)
{
    const BorrowedValue lentUserName(aUserName, MPL_TestEnvironment::m_PandoraUserName);
    const BorrowedValue lentPassword(aPassword, MPL_TestEnvironment::m_PandoraPassword);
    const std::unique_ptr<char, TextDeleter> text(cJSON_Print(aRoot));
    return QString::fromUtf8(text.get());
}

} // namespace

bool MPL_TestEnvironment::AddPandoraLogin()
{
    QString configuration;
    if (!MPL::MplUtils::ReadFile(MPL_TEST_MPL_CONFIG_FILE, configuration)) {
        qCritical() << "MPL_TestEnvironment::AddPandoraLogin - error reading file"
                    << MPL_TEST_MPL_CONFIG_FILE;
        return false;
    }
    const MPL::Detail::JsonTree root = MPL::Detail::ParseJson(configuration);
    if (!root) {
        qCritical() << "MPL_TestEnvironment::AddPandoraLogin - error parsing root for"
                    << MPL_TEST_MPL_CONFIG_FILE;
        return false;
    }
    const cJSON* login = FindLoginConfig(root.get());
    if (login == nullptr) {
        return false;
    }
    cJSON* userName = Member(login, MPL_TEST_CONFIG_KEY_USER_NAME);
    cJSON* password = Member(login, MPL_TEST_CONFIG_KEY_PASSWORD);
    if (userName == nullptr || password == nullptr) {
        qCritical() << "MPL_TestEnvironment::AddPandoraLogin - could not find both nodes"
                    << MPL_TEST_CONFIG_KEY_USER_NAME << " " << MPL_TEST_CONFIG_KEY_PASSWORD;
        return false;
    }
    return MPL::MplUtils::WriteFile(MPL_TEST_UNIT_CONFIG_FILE,
                                    PrintWithLogin(root.get(), userName, password));
}

void MPL_TestEnvironment::SetPandoraCredentials(const QString& aUserName, const QString& aPassword)
{
    m_PandoraUserName = aUserName;
    m_PandoraPassword = aPassword;
}
