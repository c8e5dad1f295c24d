/// Text that comes in pieces, as lines.
#pragma once

#include <string>
#include <string_view>

namespace sandbox
{

class Lines
{
public:
    /// Takes the next piece, which may end in the middle of a line, and calls `aTake` with each line that is
    /// whole now, without its end and its colours.
    template <typename Function>
    void Take(std::string_view aPiece, Function aTake)
    {
        const size_t isNew = m_Rest.size(); // what was there holds no end
        m_Rest += aPiece;
        size_t begin = 0;
        for (size_t end = m_Rest.find('\n', isNew); end != std::string::npos;
             end = m_Rest.find('\n', begin)) {
            aTake(WithoutColours(m_Rest.substr(begin, end - begin)));
            begin = end + 1;
        }
        m_Rest.erase(0, begin);
    }

    /// The beginning of a line whose end has not come.
    std::string Rest() const { return WithoutColours(m_Rest); }

private:
    static std::string WithoutColours(const std::string& aLine);

    std::string m_Rest;
};

} // namespace sandbox
