#include "cli/CommandLine.h"

#include "app/Services.h"
#include "base/Log.h"
#include "cli/Arguments.h"
#include "cli/DesktopProgram.h"
#include "cli/PaperLookup.h"
#include "cli/StopOnSignal.h"
#include "store/DatabaseManager.h"

#include <optional>

namespace
{

ExitStatus runWithLibrary(const Invocation &invocation, const Output &output, QList<PDFOpenRequest> &toOpen)
{
    // Before the services start their threads, which inherit the blocked signals.
    std::optional<StopOnSignal> signals;
    if (invocation.endsCleanly)
        signals.emplace();
    Services services(ServiceLocations::ofTheUser());
    const CommandContext context{.services = services,
                                 .output = output,
                                 .stop = signals ? signals->token() : std::stop_token(),
                                 .toOpen = toOpen};
    const Result<void> usable = services.db().verifyUsable().result();
    return usable ? invocation.run(context) : fail(usable.error(), context);
}

ExitStatus run(const Invocation &invocation, const Output &output)
{
    if (invocation.runAlone)
        return invocation.runAlone(output);
    QList<PDFOpenRequest> toOpen;
    const ExitStatus status = runWithLibrary(invocation, output, toOpen);
    return status == ExitStatus::Done && !toOpen.isEmpty() ? becomeDesktopProgram(toOpen) : status;
}

} // namespace

int runCommandLine(int argc, const char *const *argv)
{
    if (argc <= 1)
        return static_cast<int>(becomeDesktopProgram());
    // Standard output holds the answer; what components have to say goes beside it.
    setLogTarget(LogTarget::StandardError);
    const auto parsed = parseArguments(argc, argv);
    if (const auto *status = std::get_if<ExitStatus>(&parsed))
        return static_cast<int>(*status);
    const auto &invocation = std::get<Invocation>(parsed);
    const Output output(invocation.form);
    const ExitStatus status = run(invocation, output);
    return static_cast<int>(status == ExitStatus::Done && !output.isComplete() ? ExitStatus::Failed : status);
}
