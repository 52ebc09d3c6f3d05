import Corvane

EmptyState {
    symbol: "rectangle.3.group"
    isEncircled: true
    title: "No Workspaces Yet"
    message: "Create your first workspace to organize and launch your applications, files, and folders together."
    actionSymbol: "plus.circle.fill"
    actionTitle: "Create Your First Workspace"
}
