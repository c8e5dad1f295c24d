#include "DoublesTest.h"
#include <MPL_TestEnvironment.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

using namespace MPL::Doubles;

namespace
{

const QString kConfig = "/opt/talvex/etc/mplConfig.json";
const QString kUnitConfig = "/var/talvex/media-player/mplUnitConfig.json";

// What a test program's own static objects make of the controller's.
const QString kBelowTheDefault = kMPLDefaultEnvironment + "sub";
const QStringList kDeviceIds{TEST_SOURCE_1_DEVICE_ID, TEST_SOURCE_2_DEVICE_ID, TEST_SOURCE_3_DEVICE_ID};
const QStringList kFirstState{MPL_TestEnvironment::m_EnvironmentDirectory,
                              MPL_TestEnvironment::m_PandoraUserName, MPL_TestEnvironment::m_PandoraPassword};
const bool kConnectedAtFirst = MPL_TestEnvironment::m_TestDbusConnection.isConnected();

TEST(EnvironmentStatics, AreThereBeforeThoseOfTheTestProgram)
{
    EXPECT_EQ(kBelowTheDefault, "/var/talvex/media-player/test/sub");
    EXPECT_EQ(kDeviceIds, QStringList({"00000001", "00000002", "00000003"}));
    EXPECT_EQ(kFirstState, QStringList({kMPLDefaultEnvironment, MPL_TEST_PANDORA_USER_NAME_1,
                                        MPL_TEST_PANDORA_PASSWORD_1}));
    EXPECT_FALSE(kConnectedAtFirst);
}

class Environment : public DoublesTest
{
protected:
    QString Path(const QString& aName) const { return m_Folder.filePath(aName); }

    QString WrittenFile(const QString& aName) const
    {
        QFile file(Path(aName));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(aName.toUtf8());
        return file.fileName();
    }

    QTemporaryDir m_Folder;
};

TEST_F(Environment, IsCreatedWithItsParentsAndCleanedOnlyOnRequest)
{
    const QString directory = Path("a/b/c/");
    EXPECT_TRUE(MPL_TestEnvironment::SetEnvironment(directory, true));
    EXPECT_EQ(MPL_TestEnvironment::m_EnvironmentDirectory, directory);
    ASSERT_TRUE(QDir(directory).mkpath("sub"));
    WrittenFile("a/b/c/sub/file");
    EXPECT_TRUE(MPL_TestEnvironment::SetEnvironment(directory, false));
    EXPECT_TRUE(QFile::exists(directory + "sub/file"));
    EXPECT_TRUE(MPL_TestEnvironment::SetEnvironment(directory, true));
    EXPECT_TRUE(QDir(directory).isEmpty());
}

TEST_F(Environment, StaysWhenTheNewOneCannotBeMade)
{
    EXPECT_FALSE(MPL_TestEnvironment::SetEnvironment("", true));
    EXPECT_FALSE(MPL_TestEnvironment::SetEnvironment(WrittenFile("file"), false));
    EXPECT_FALSE(MPL_TestEnvironment::SetEnvironment(Path("file/below"), true));
    EXPECT_EQ(MPL_TestEnvironment::m_EnvironmentDirectory, kMPLDefaultEnvironment);
}

TEST_F(Environment, LosesItsFilesButNotItsDirectories)
{
    EXPECT_TRUE(MPL_TestEnvironment::SetEnvironment(Path("env"), false));
    ASSERT_TRUE(QDir(Path("env")).mkpath("sub"));
    WrittenFile("env/file");
    WrittenFile("env/sub/file");
    EXPECT_FALSE(MPL_TestEnvironment::CleanEnvironment());
    EXPECT_EQ(QDir(Path("env")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList{"sub"});
    EXPECT_TRUE(QFile::exists(Path("env/sub/file")));

    // An empty directory still lists itself and its parent.
    EXPECT_TRUE(MPL_TestEnvironment::SetEnvironment(Path("env"), true));
    EXPECT_FALSE(MPL_TestEnvironment::CleanEnvironment());
    MPL_TestEnvironment::m_EnvironmentDirectory = Path("missing");
    EXPECT_TRUE(MPL_TestEnvironment::CleanEnvironment());
}

TEST_F(Environment, TakesEachFileOnce)
{
    EXPECT_TRUE(MPL_TestEnvironment::SetEnvironment(Path("env"), false));
    const QString file = WrittenFile("song.mp3");
    EXPECT_TRUE(MPL_TestEnvironment::UseFile(file));
    EXPECT_TRUE(QFile::exists(Path("env/song.mp3")));
    EXPECT_FALSE(MPL_TestEnvironment::UseFile(file));
    EXPECT_FALSE(MPL_TestEnvironment::UseFile(Path("missing.mp3")));
    EXPECT_FALSE(MPL_TestEnvironment::UseFile(Path("env/")));
    EXPECT_FALSE(MPL_TestEnvironment::UseFile(""));
}

TEST_F(Environment, IsSterilisedInOrderUpToTheFirstFailure)
{
    World().processes["media_manager"] = 1;
    EXPECT_TRUE(MPL_TestEnvironment::SterilizeEnvironment(true));
    EXPECT_EQ(Notes("kill").mid(4), (QStringList{"kill media_source_spotify TERM",
                                                 "kill test_media_source TERM", "kill media_manager TERM"}));
    EXPECT_EQ(Notes().last(), "debug: MPL_TestEnvironment::ClearMPLState result= true");
    EXPECT_EQ(Notes("DataManager").size(), 2);

    for (const char* name : {"media_mme", "test_media_source", "media_source_disc"}) {
        MakeImmortal(name);
        ClearNotes();
        EXPECT_FALSE(MPL_TestEnvironment::SterilizeEnvironment(true));
        EXPECT_EQ(Notes("kill").last(), QStringLiteral("kill %1 KILL").arg(name));
        EXPECT_EQ(Notes("save").size(), 0);
    }
    World() = {};
    World().savePlaybackState = false;
    EXPECT_FALSE(MPL_TestEnvironment::SterilizeEnvironment(false));
}

TEST_F(Environment, ForgetsTheActiveSourceWhateverTheDataManagerSays)
{
    World().startUpResult = -12;
    EXPECT_TRUE(MPL_TestEnvironment::ClearMPLState(true));
    World().saveSource = false;
    EXPECT_FALSE(MPL_TestEnvironment::ClearMPLState(false));
    EXPECT_EQ(Text(Notes()),
              Text({"DataManager::StartUp", "debug: DataManager::StartUp failed -12",
                    "save active source \"\"", "save playback state \"\"", "DataManager::ShutDown",
                    "debug: MPL_TestEnvironment::ClearMPLState result= true", "save active source \"\"",
                    "debug: MPL_TestEnvironment::ClearMPLState result= false"}));
}

using PandoraLogin = DoublesTest;

TEST_F(PandoraLogin, ReplacesOnlyTheCredentials)
{
    MPL_TestEnvironment::SetPandoraCredentials("a \"quoted\" \\ name", "");
    World().files[kConfig] = R"({"other": ["ü", 1.5, null], "config": {"pandora": {"login_config":
            {"login_type": "t", "user_name": "old", "password": "old", "track_token": true}}}})";
    const QString original = World().files[kConfig];
    EXPECT_TRUE(MPL_TestEnvironment::AddPandoraLogin());
    QString expected = original;
    expected.replace("\"user_name\": \"old\"", "\"user_name\": \"a \\\"quoted\\\" \\\\ name\"");
    expected.replace("\"password\": \"old\"", "\"password\": \"\"");
    EXPECT_EQ(QJsonDocument::fromJson(World().files[kUnitConfig].toUtf8()),
              QJsonDocument::fromJson(expected.toUtf8()));
    EXPECT_TRUE(World().files[kUnitConfig].contains("\n\t\"config\":\t{")) << "not indented";
    EXPECT_EQ(World().files[kConfig], original);
    EXPECT_EQ(Text(Notes()), Text({"read " + kConfig, "write " + kUnitConfig}));

    World().unwritable << kUnitConfig;
    EXPECT_FALSE(MPL_TestEnvironment::AddPandoraLogin());
}

// The types of the two nodes are not checked: what is no text stays as it is, and nothing is lost or freed
// twice.
TEST_F(PandoraLogin, LeavesCredentialsThatAreNoTextAlone)
{
    World().files[kConfig] =
        R"({"config":{"pandora":{"login_config":{"user_name":{"a":["b"]},"password":7}}}})";
    EXPECT_TRUE(MPL_TestEnvironment::AddPandoraLogin());
    EXPECT_EQ(QJsonDocument::fromJson(World().files[kUnitConfig].toUtf8()),
              QJsonDocument::fromJson(World().files[kConfig].toUtf8()));
}

const QString kParsing = "error parsing root for \"" + kConfig + "\"";
const QString kBoth = "could not find both nodes \"user_name\"   \"password\"";
const QList<QPair<QString, QString>> kBadConfigs{
    {"", kParsing},
    {"{\"config\": ", kParsing},
    {"[]", "could not find node \"config\""},
    {R"({"Config": {}})", "could not find node \"config\""},
    {R"({"config": {"other": 1}})", "could not find node \"pandora\""},
    {R"({"config": {"pandora": "text"}})", "could not find node \"login_config\""},
    {R"({"config": {"pandora": {"login_config": {"user_name": "u"}}}})", kBoth},
    {R"({"config": {"pandora": {"login_config": {"password": "p"}}}})", kBoth}};

TEST_F(PandoraLogin, SaysWhatTheConfigurationLacks)
{
    const QString prefix = "critical: MPL_TestEnvironment::AddPandoraLogin - ";
    EXPECT_FALSE(MPL_TestEnvironment::AddPandoraLogin());
    EXPECT_EQ(Text(Notes("critical")), Text({prefix + "error reading file \"" + kConfig + "\""}));
    for (const auto& [text, complaint] : kBadConfigs) {
        ClearNotes();
        World().files[kConfig] = text;
        EXPECT_FALSE(MPL_TestEnvironment::AddPandoraLogin());
        EXPECT_EQ(Text(Notes()), Text({"read " + kConfig, prefix + complaint}));
    }
}

} // namespace
