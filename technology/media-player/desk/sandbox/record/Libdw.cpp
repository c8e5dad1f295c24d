#include "Libdw.h"

#include <dlfcn.h>

namespace sandbox
{

namespace
{

class Loader
{
public:
    template <typename Function>
    void Find(const char* aName, Function& aFunction)
    {
        aFunction = m_Library != nullptr ? reinterpret_cast<Function>(dlsym(m_Library, aName)) : nullptr;
        m_HasAll = m_HasAll && aFunction != nullptr;
    }

    bool HasAll() const { return m_HasAll; }

private:
    void* m_Library = dlopen("libdw.so.1", RTLD_NOW | RTLD_LOCAL); // for good
    bool m_HasAll = true;
};

bool Load(Libdw& aLibdw)
{
    Loader loader;
    loader.Find("dwfl_begin", aLibdw.begin);
    loader.Find("dwfl_end", aLibdw.end);
    loader.Find("dwfl_linux_proc_report", aLibdw.linuxProcReport);
    loader.Find("dwfl_report_end", aLibdw.reportEnd);
    loader.Find("dwfl_linux_proc_attach", aLibdw.linuxProcAttach);
    loader.Find("dwfl_linux_proc_find_elf", aLibdw.linuxProcFindElf);
    loader.Find("dwfl_standard_find_debuginfo", aLibdw.standardFindDebuginfo);
    loader.Find("dwfl_getthread_frames", aLibdw.getthreadFrames);
    loader.Find("dwfl_frame_pc", aLibdw.framePc);
    loader.Find("dwfl_addrmodule", aLibdw.addrmodule);
    loader.Find("dwfl_module_info", aLibdw.moduleInfo);
    loader.Find("dwfl_module_addrname", aLibdw.moduleAddrname);
    loader.Find("dwfl_module_getsrc", aLibdw.moduleGetsrc);
    loader.Find("dwfl_lineinfo", aLibdw.lineinfo);
    return loader.HasAll();
}

} // namespace

const Libdw* Libdw::Get()
{
    static Libdw s_Libdw;
    static const bool kIsLoaded = Load(s_Libdw);
    return kIsLoaded ? &s_Libdw : nullptr;
}

} // namespace sandbox
