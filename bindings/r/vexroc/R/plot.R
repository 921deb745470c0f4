#' Colours that people with any kind of colour vision tell apart (Okabe and Ito 2008).
palette_okabe_ito <- c("#0072B2", "#D55E00", "#009E73", "#CC79A7", "#E69F00", "#56B4E9", "#000000", "#F0E442")

plot.vexroc <- function(x, what = c("curve", "precision_recall"), legend = !add, add = FALSE, col = NULL, lty = 1,
                        lwd = 2, ...) {
  what <- choice(what, "what", plot.vexroc)
  refuse_unknown_graphics(add, ...)
  curves <- lapply(curves_of(x, what), if (what == "curve") roc_points else pr_points)
  if (!any(vapply(curves, function(curve) length(curve$x) > 0, NA)))
    fail("there is no curve to draw\n", paste(x$cautions$text, collapse = "\n"))
  if (!add) empty_plot(what, ...)
  names <- curve_names(x$areas)
  col <- rep_len(if (is.null(col)) palette_okabe_ito else col, length(names))
  for (i in seq_along(names)) lines(curves[[i]], col = col[i], lty = rep_len(lty, i)[i], lwd = rep_len(lwd, i)[i])
  areas <- ifelse(is.na(x$areas$area), paste0(names, ": no curve"),
                  sprintf("%s: %.3f (%.3f to %.3f)", names, x$areas$area, x$areas$lower, x$areas$upper))
  if (legend)
    graphics::legend(if (what == "curve") "bottomright" else "bottomleft", bty = "n", col = col, lty = lty, lwd = lwd,
                     legend = if (what == "curve") areas else names,
                     title = if (what == "curve") paste0("area (", 100 * x$study$settings$confidence_level, " % ",
                                                         all_of(x$areas$interval), " interval)"))
  invisible(x)
}

#' What plot() takes, and nothing where nothing is passed on to it.
refuse_unknown_graphics <- function(add, ...) {
  names <- names(substitute(list(...)))[-1]
  if (...length() > 0 && is.null(names)) fail("plot() takes further arguments by name only")
  unknown <- setdiff(names, if (!add) c(names(formals(graphics::plot.default)), graphics_names))
  if (length(unknown) > 0) fail("plot() does not know `", unknown[1], "`", if (add) " with add = TRUE")
}

#' As par() knows them, without opening a device.
graphics_names <- c("adj", "bg", "cex", "cex.axis", "cex.lab", "cex.main", "cex.sub", "col.axis", "col.lab", "col.main",
                    "col.sub", "family", "fg", "font", "font.axis", "font.lab", "font.main", "font.sub", "lab", "las",
                    "mgp", "tck", "tcl", "xaxp", "xpd", "yaxp", "bty")

roc_points <- function(curve) list(x = 1 - curve$specificity, y = curve$sensitivity)
pr_points <- function(curve) list(x = curve$recall, y = curve$precision)

#' The square in which curves are drawn; the caller's arguments of plot() win.
empty_plot <- function(what, ...) {
  old <- par(pty = "s")
  on.exit(par(old))
  labels <- if (what == "curve") c("1 - specificity", "sensitivity") else c("recall", "precision")
  arguments <- list(x = c(0, 1), y = c(0, 1), xlab = labels[1], ylab = labels[2], xaxs = "i", yaxs = "i")
  do.call(plot, utils::modifyList(utils::modifyList(arguments, list(...)), list(type = "n")))
  if (what == "curve") abline(0, 1, lty = 2, col = "grey50")
}

plot.vexroc_table <- function(x, legend = TRUE, col = NULL, lty = 1, lwd = 2, ...) {
  refuse_unknown_graphics(add = FALSE, ...)
  col <- if (is.null(col)) palette_okabe_ito else col
  frame <- as.data.frame(x)
  curves <- split(frame, factor(curve_names(frame), unique(curve_names(frame))))
  if ("net_benefit" %in% names(frame)) decision_plot(curves, legend, col, lty, lwd, ...)
  else if (all(c("cut_off", "sensitivity", "specificity") %in% names(frame)) && is.null(frame$criterion) &&
             length(curves) == 1) rates_plot(frame, legend, col, lty, lwd, ...)
  else fail("plot() draws net benefits, and sensitivity and specificity of the operating points of one test")
  invisible(x)
}

empty_axes <- function(xlim, ylim, xlab, ylab, ...)
  do.call(plot, utils::modifyList(utils::modifyList(list(x = xlim, y = ylim, xlab = xlab, ylab = ylab), list(...)),
                                  list(type = "n")))

#' Net benefits of the tests, of treating all, and of treating none.
decision_plot <- function(curves, legend, col, lty, lwd, ...) {
  benefits <- unlist(lapply(curves, `[[`, "net_benefit"))
  top <- max(0, benefits)
  empty_axes(range(curves[[1]]$threshold), c(-0.25, 1) * max(top, 1e-3), "threshold of risk", "net benefit", ...)
  abline(h = 0, col = "grey50")
  for (i in rev(seq_along(curves))) {
    curve <- curves[[i]][order(curves[[i]]$threshold), ]
    lines(curve$threshold, curve$treat_all, col = "grey50", lty = 2)
    lines(curve$threshold, curve$net_benefit, col = rep_len(col, i)[i], lty = rep_len(lty, i)[i],
          lwd = rep_len(lwd, i)[i])
  }
  if (legend)
    graphics::legend("topright", c(names(curves), "treat all", "treat none"), bty = "n",
                     col = c(rep_len(col, length(curves)), "grey50", "grey50"),
                     lty = c(rep_len(lty, length(curves)), 2, 1), lwd = c(rep_len(lwd, length(curves)), 1, 1))
}

#' Sensitivity and specificity against the cut-off, in the pointwise bands of their intervals.
rates_plot <- function(frame, legend, col, lty, lwd, ...) {
  frame <- frame[order(frame$cut_off), ]
  empty_axes(range(frame$cut_off[is.finite(frame$cut_off)]), c(0, 1), paste("cut-off of", frame$test[1]), "share", ...)
  rates <- c("sensitivity", "specificity")
  for (i in seq_along(rates)) {
    shown <- rep_len(col, i)[i]
    limits <- frame[paste0(rates[i], c("_lower", "_upper"))[paste0(rates[i], "_lower") %in% names(frame)]]
    for (limit in limits) lines(frame$cut_off, limit, col = shown, lty = 3)
    lines(frame$cut_off, frame[[rates[i]]], col = shown, lty = rep_len(lty, i)[i], lwd = rep_len(lwd, i)[i])
  }
  if (legend)
    graphics::legend("right", rates, bty = "n", col = rep_len(col, 2), lty = rep_len(lty, 2),
                     lwd = rep_len(lwd, 2), title = if (length(limits) > 0) "dotted: pointwise intervals")
}
