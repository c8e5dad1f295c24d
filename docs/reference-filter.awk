# Shows Doxygen what a reader of the headers sees: the opening comment describes the file and the class in it, a
# comment holds for all declarations below it up to the next blank line, and a word of the stack needs none.
FNR == 1 { print "/// @file" }

/^ *\/\/\// {
    if (fresh) {
        comment = ""
    }
    if (!/@(name|{|})/) {
        comment = comment $0 "\n"
    }
    fresh = 0
    documented = !/@[{}]/
    ended = !documented
    print
    next
}

!documented && /^(class|struct) [A-Za-z_]+( |$)/ && !/;$/ {
    file = FILENAME
    sub(/.*\//, "", file)
    print "/// @copydoc " file
}
!documented && /^inline const QString / && !comment { print "/// A word of the stack." }
!documented && /^inline const std::array</ && !comment { print "/// All words of the group, in order." }
!documented && comment && ended && !/^ *(}|#|private:|protected:|public:|$)/ { printf "%s", comment }

{
    print
    documented = 0
    fresh = 1
    ended = /;$|{.*}$/
}
/^ *$|{$|^ *}/ { comment = "" }
