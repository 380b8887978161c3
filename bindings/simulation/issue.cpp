#include "bindings/table.h"

#include <pedflux/issue.h>

namespace pedflux::jni {

CLASS(Issue)
CONSTRUCTOR(Issue)
GET(Issue, Title)
GET(Issue, Summary)
GET(Issue, Description)
HAS(Issue, Description)
GET(Issue, IssueCategory)

}  // namespace pedflux::jni
