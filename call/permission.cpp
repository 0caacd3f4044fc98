#include "call/permission.h"

namespace call
{

Verdict UpTo::decide(const PermissionRequest &request)
{
    if (request.impact <= allowed) return Verdict::send;
    throw Refused(request.doing + ": is " + std::string(catalogue::to_text(request.impact)) + ", and only " +
                  std::string(catalogue::to_text(allowed)) + " is allowed");
}

} // namespace call
