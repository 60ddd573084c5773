#include "ui/RetaggingOverlay.h"

#include "app/LibraryViewModel.h"

RetaggingOverlay::RetaggingOverlay(LibraryViewModel &vm, QWidget *covered)
    : ProgressOverlay(QStringLiteral("Retagging Library..."), covered)
    , m_vm(vm)
{
    setObjectName(QStringLiteral("retaggingOverlay"));
    const auto progress = [this] {
        showProgress();
    };
    m_observers.push_back(m_vm.retagProgress.addNotifier(progress));
    m_observers.push_back(m_vm.retagCount.addNotifier(progress));
    m_observers.push_back(m_vm.retagTotal.addNotifier(progress));
    m_observers.push_back(m_vm.isRetagging.addNotifier([this] { setShown(m_vm.isRetagging); }));
    showProgress();
    setShown(m_vm.isRetagging);
}

void RetaggingOverlay::showProgress()
{
    setProgress(m_vm.retagProgress, m_vm.retagCount, m_vm.retagTotal);
}
