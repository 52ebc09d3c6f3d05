import Corvane

EmptyState {
    symbol: "magnifyingglass"
    title: "No Results Found"
}
