// The answers to requests below /api/v1, one function each. They throw a Refusal.
#pragma once

#include "web/context.h"

namespace front
{

HttpResponse answer_olts(const Context &context);
HttpResponse answer_olt(const Context &context);
HttpResponse answer_ports(const Context &context);
HttpResponse answer_port(const Context &context);
HttpResponse answer_plant(const Context &context);

HttpResponse answer_onus(const Context &context);
HttpResponse answer_onu(const Context &context);
HttpResponse answer_waiting(const Context &context);
HttpResponse answer_alarms(const Context &context);
HttpResponse answer_light(const Context &context);
HttpResponse answer_search(const Context &context);

HttpResponse answer_events(const Context &context);
HttpAnswer answer_stream(const Context &context);

HttpResponse answer_operations(const Context &context);
HttpResponse answer_call(const Context &context);
HttpResponse answer_profiles(const Context &context);

HttpResponse answer_settings(const Context &context);
HttpResponse answer_configuration_text(const Context &context);
HttpResponse answer_compare(const Context &context);
HttpResponse answer_apply(const Context &context);
HttpResponse answer_pending(const Context &context);
HttpResponse answer_confirm(const Context &context);
HttpResponse answer_rollback(const Context &context);

HttpResponse answer_session(const Context &context);
HttpResponse answer_log_in(const Context &context);
HttpResponse answer_log_out(const Context &context);

} // namespace front
