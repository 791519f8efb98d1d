"""Plots of figures: what an operation costs against how many records there are, and all ratios."""

import re

import matplotlib

matplotlib.use("Agg")  # no display

# pylint: disable=wrong-import-position
from matplotlib import pyplot
from matplotlib.ticker import FuncFormatter, LogLocator, NullLocator

from bars import RATIO_BARS, name_of, ratio_of
from figures import OPERATION_NAMES, STORE_NAMES, time_text
from tables import GROUPS

# A store has its colour in every plot; the same data otherwise asked for is the same colour, dashed.
STYLES = {
    # Broad and behind the others, which often lie on it.
    "larkmoor": {"color": "#e0475f", "linewidth": 4, "marker": "o", "markersize": 8, "zorder": 2},
    "lmdb": {"color": "#1f5a92", "linewidth": 1.6, "marker": "s"},
    "packed_lmdb": {"color": "#7fb2e0", "linewidth": 1.4, "marker": "s", "linestyle": ":"},
    "lmdb_one_transaction": {"color": "#1f5a92", "linewidth": 1.4, "marker": "s",
                             "linestyle": "--", "markerfacecolor": "white"},
    "sqlite": {"color": "#3d7a3d", "linewidth": 1.6, "marker": "^"},
    "sqlite_one_query": {"color": "#3d7a3d", "linewidth": 1.4, "marker": "^", "linestyle": "--",
                         "markerfacecolor": "white"},
    "sqlite_full": {"color": "#9c6b1e", "linewidth": 1.6, "marker": "v"},
}
MISSED, HELD = "#c8102e", "#4c8c4a"
GRID = {"color": "#dddddd", "linewidth": 0.7}
DOTS_PER_INCH = 150


def file_name(title):
    return "_".join(re.findall(r"\w+", title.lower())) + ".png"


def bare(axes):
    """Without what does not tell anything."""
    for side in ("top", "right"):
        axes.spines[side].set_visible(False)
    for side in ("left", "bottom"):
        axes.spines[side].set_color("#888888")
    axes.tick_params(colors="#444444", labelsize=9)
    axes.set_axisbelow(True)


def draw_operation(axes, figures, kind, operation):
    sizes = figures.sizes(kind, operation)
    for store in figures.stores(kind, operation):
        times = [figures.get(kind, operation, store, records) for records in sizes]
        axes.plot(sizes, times, label=STORE_NAMES[store], **{"markersize": 5, "zorder": 3} |
                  STYLES[store])
    axes.set_xscale("log")
    axes.set_yscale("log")
    axes.set_title(OPERATION_NAMES[operation], fontsize=11, loc="left", color="#222222")
    axes.grid(True, **GRID)
    axes.set_xticks(sizes)
    axes.xaxis.set_minor_locator(NullLocator())
    axes.xaxis.set_major_formatter(FuncFormatter(lambda value, _: f"{value:,.0f}"))
    widen(axes)
    axes.yaxis.set_major_locator(LogLocator(subs=(1, 2, 5), numticks=20))
    axes.yaxis.set_minor_locator(NullLocator())
    axes.yaxis.set_major_formatter(FuncFormatter(lambda value, _: tick_text(value)))
    bare(axes)


def tick_text(nanoseconds):
    value, unit = time_text(nanoseconds).split()
    return f"{float(value.replace(',', '')):g} {unit}"


def widen(axes):
    """At least a decade, so that noise does not look like a trend and there are ticks to read."""
    low, high = axes.get_ylim()
    if high / low < 20:
        middle = (low * high) ** 0.5
        axes.set_ylim(middle / 20 ** 0.5, middle * 20 ** 0.5)


def plot_group(figures, title, kind, operations, path):
    operations = [each for each in operations if figures.sizes(kind, each)]
    columns = min(len(operations), 2)
    rows = -(-len(operations) // columns)
    figure, grid = pyplot.subplots(rows, columns, figsize=(5.2 * columns, 3.1 * rows + 1.0),
                                   squeeze=False)
    handles = {}
    for axes, operation in zip(grid.flat, operations):
        draw_operation(axes, figures, kind, operation)
        handles |= {label: handle for handle, label in zip(*axes.get_legend_handles_labels())}
    for axes in grid[-1]:
        axes.set_xlabel("records on file", fontsize=9, color="#444444")
    figure.suptitle(title, fontsize=13, x=0.02, ha="left", fontweight="bold")
    labels = [name for name in STORE_NAMES.values() if name in handles]
    lines = 1 if len(labels) < 6 else 2
    figure.legend([handles[label] for label in labels], labels, loc="lower center", frameon=False,
                  ncol=-(-len(labels) // lines), fontsize=9)
    legend_inches = 0.15 + 0.25 * lines
    figure.tight_layout(rect=(0, legend_inches / figure.get_figheight(), 1, 1))
    save(figure, path)


def save(figure, path):
    figure.savefig(path, dpi=DOTS_PER_INCH, facecolor="white")
    pyplot.close(figure)


def barred(figures, peer):
    """What has a bar beside that peer and was measured, and its ratios by number of records."""
    for (kind, operation, against), bar in RATIO_BARS.items():
        ratios = [(records, ratio_of(figures, kind, operation, against, records))
                  for records in figures.sizes(kind, operation)]
        ratios = [(records, ratio) for records, ratio in ratios if ratio is not None]
        if against == peer and ratios:
            yield name_of(kind, operation), bar, ratios


def draw_ratios(axes, figures, peer):
    shown = list(barred(figures, peer))
    for place, (_, bar, ratios) in enumerate(shown):
        axes.plot([bar, bar], [place - 0.38, place + 0.38], color="#222222", linewidth=2, zorder=3)
        for rank, (_, ratio) in enumerate(ratios):
            missed = round(ratio, 2) > bar
            axes.scatter(ratio, place, s=22 + 16 * rank, zorder=4, alpha=0.8, linewidths=0,
                         color=MISSED if missed else HELD)
    for place in range(0, len(shown), 2):
        axes.axhspan(place - 0.5, place + 0.5, color="#f5f5f5", zorder=0)
    axes.axvline(1, color="#999999", linewidth=0.8, linestyle=":")
    axes.set_yticks(range(len(shown)), [name for name, _, _ in shown])
    axes.set_ylim(len(shown) - 0.5, -0.5)
    axes.set_xscale("log")
    axes.set_xticks([value for value in (0.01, 0.1, 0.2, 0.5, 1, 2, 5)
                     if axes.get_xlim()[0] <= value <= axes.get_xlim()[1]])
    axes.xaxis.set_minor_locator(NullLocator())
    axes.xaxis.set_major_formatter(FuncFormatter(lambda value, _: f"{value:g}"))
    axes.set_title(f"Larkmoor's time by that of {STORE_NAMES[peer]}", fontsize=11, loc="left")
    axes.grid(True, axis="x", **GRID)
    bare(axes)


def plot_overview(figures, path):
    peers = [peer for peer in ("lmdb", "sqlite") if list(barred(figures, peer))]
    most = max(len(list(barred(figures, peer))) for peer in peers)
    figure, grid = pyplot.subplots(1, len(peers), figsize=(6.8 * len(peers), 0.24 * most + 1.6),
                                   squeeze=False)
    for axes, peer in zip(grid.flat, peers):
        draw_ratios(axes, figures, peer)
    figure.suptitle("All ratios and their bars", fontsize=13, x=0.01, ha="left", fontweight="bold")
    figure.text(0.01, 0.012, "Left is faster. A black mark is a bar; a dot right of it, in red, misses "
                "it. Larger dots are more records.", fontsize=9, color="#444444")
    figure.tight_layout(rect=(0, 0.035, 1, 1), w_pad=3)
    save(figure, path)


def write_plots(figures, folder):
    """Writes a plot for each group and the overview. Returns their paths."""
    folder.mkdir(parents=True, exist_ok=True)
    paths = []
    for title, kind, operations in GROUPS:
        if any(figures.sizes(kind, operation) for operation in operations):
            paths.append(folder / file_name(title))
            plot_group(figures, title, kind, operations, paths[-1])
    paths.append(folder / "overview.png")
    plot_overview(figures, paths[-1])
    return paths
