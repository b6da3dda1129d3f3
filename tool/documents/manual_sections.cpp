#include "documents/manual.h"

namespace pagescan::tool {

namespace {

constexpr char kBytesRule[] =
    R"(A member whose bytes are not UTF-8 is written with one code point from U+0000 to U+00FF for each byte, and
is named in a further member
.Va bytes ,
an array that is there only when needed.
)";

constexpr char kRecords[] = R"(.Sh RECORDS
As JSON Lines each record is an object with the members
.Va file ,
.Va tag ,
.Va attribute ,
.Va offset
(bytes from the start of the input to the value's first byte; \-1 for an attribute without a value),
.Va original
(the value as written, without its quotes) and
.Va resolved .
)";

constexpr char kTable[] = R"(.Pp
The table shows the same; control characters and bytes that are not UTF-8 appear as
.Ql \exNN .
)";

constexpr char kLinksDiagnostics[] = R"(.Sh DIAGNOSTICS
Bytes at which the reading would end too early or never are made harmless in a copy; offsets are not moved.
NUL bytes are taken for blanks.
A
.Ql <SCRIPT
that lacks its
.Ql >
before the next
.Ql </SCRIPT>
is taken for text; a warning names its offset.
)";

constexpr char kReferences[] = R"(.Sh RECORDS
As JSON Lines each reference is an object with these members, in this order:
.Bl -tag -width attribute
.It Va file
The input as it was named.
.It Va start , end
The bytes that spell the URL, as offsets from the start of the input; end is the first one after them.
.It Va line , column
Where they start, both from 1, columns in bytes.
A line ends with LF, CR or CR LF.
.It Va element , attribute
The place in lower case; svg: or math: stands before elements of these namespaces, and the attribute is
empty for the text of an element.
.It Va kind , slot
What the place is for, and how the URL is written there.
.It Va flags
An array of words, only there when there are any.
.It Va raw
The bytes as written.
.It Va value
What they say once character references and escapes are decoded, in Unicode.
.It Va url
The absolute URL; not there where a browser makes none of the value.
.It Va parent
For what stands in a srcdoc or in a noscript: the offset of the
.Ql <
of the tag that holds it.
.El
.Pp
)";

}  // namespace

std::string furtherSections(const std::string& command) {
  if (command == "inventory") return std::string(kReferences) + kBytesRule + kTable;
  if (command == "links") return std::string(kRecords) + kBytesRule + kTable + kLinksDiagnostics;
  if (command == "css") return std::string(kRecords) + kBytesRule + kTable;
  return "";
}

}  // namespace pagescan::tool
