# What is asked of a fit beyond its areas, against published definitions, wilcox.test and pROC.
library(vexroc)

quietly <- function(expression) suppressWarnings(expression, classes = "vexroc_caution")
near <- function(a, b, tolerance = 1e-12) stopifnot(isTRUE(all.equal(c(a), c(b), tolerance = tolerance)))
of <- function(positive, negative, ...)
  quietly(vexroc(c(positive, negative), rep(1:0, c(length(positive), length(negative))), ...))
tests <- function(fit) vapply(c("two.sided", "greater", "less"), function(side)
  mann_whitney(fit, alternative = side)$p_value, 0)
normal <- function(fit) vapply(c("two.sided", "greater", "less"), function(side)
  mann_whitney(fit, exact = FALSE, alternative = side)$p_value, 0)

# Degenerate data, worked by hand: area, limits of score, exact and normal p (two-sided, greater, less), partial area to
# the false positive rate 0.5, standardized, precision-recall areas by step and integral, best Youden index.
worked <- list(
  list(c(1, 2), c(3, 4), c(0, 0, 0.614364), c(0.333333, 1, 0.166667), c(0.245278, 0.973596, 0.122639),
       c(0, 0.333333), c(0.416667, 0.306853), 0, c(0, 5)),
  list(c(3, 4), c(1, 2), c(1, 0.385636, 1), c(0.333333, 0.166667, 1), c(0.245278, 0.122639, 0.973596),
       c(0.5, 1), c(1, 1), 1, 2.5),
  list(c(2, 2), c(2, 2), c(0.5, 0.112243, 0.887757), c(1, 1, 1), c(1, 1, 1), c(0.125, 0.5), c(0.5, 0.5), 0, c(1, 3)),
  list(3, c(1, 2, 4), c(0.666667, 0.152920, 0.955477), c(1, 0.5, 0.75), c(1, 0.5, 0.814453),
       c(0.166667, 0.555556), c(0.5, 0.306853), 0.666667, 2.5),
  list(c(1, 3, 3), c(1, 2, 2, 4), c(0.541667, 0.156982, 0.880946), c(0.885714, 0.457143, 0.657143),
       c(1, 0.5, 0.641855), c(0.166667, 0.555556), c(0.587302, 0.439090), 0.416667, 2.5))
for (row in worked) {
  fit <- of(row[[1]], row[[2]])
  partial <- quietly(partial_area(fit, c(1, 0.5)))
  best <- best_cut_offs(fit)
  curve <- vapply(c("step", "integral"), function(rule) quietly(pr_area(fit, rule))$pr_area, 0)
  said <- c(unlist(fit$areas[c("area", "lower", "upper")]), tests(fit), normal(fit), partial$partial_area,
            partial$standardized, curve, best$value[1])
  near(unname(said), unlist(row[3:8]), 2e-6)
  stopifnot(identical(best$cut_off, row[[9]]), sum(best$chosen) == 1, best$chosen[nrow(best)])
}

# A fit answers from its counts alone, also after a journey, in either direction and by group.
set.seed(3)
n <- 120
study <- data.frame(state = rep(0:1, c(70, 50)), sex = sample(c("f", "m"), n, TRUE))
study$a <- round(rnorm(n) + study$state, 1)
study$b <- -study$a + round(rnorm(n), 1)
fit <- vexroc(state ~ a + b, study, direction = c(b = "smaller"))
kept <- unserialize(serialize(fit, NULL))
points <- operating_points(kept, at = list(a = c(0.5, -Inf), b = 0), prevalence = 0.1)
positive <- study$state == 1
near(points$sensitivity, c(mean(study$a[positive] >= 0.5), 1, mean(study$b[positive] <= 0)))
near(points$ppv[1], with(points[1, ], 0.1 * sensitivity / (0.1 * sensitivity + 0.9 * (1 - specificity))))
stopifnot(identical(points$test, c("a", "a", "b")), nrow(points$notes) == 0,
          "sample-prevalence" %in% operating_points(fit, 0)$notes$code)
by_sex <- vexroc(state ~ a | sex, study)
men <- vexroc(state ~ a, study, subset = sex == "m")
near(partial_area(by_sex)$partial_area[2], partial_area(men)$partial_area)
best <- best_cut_offs(fit, c("specificity=0.9", "youden"))
stopifnot(best$specificity[best$criterion == "specificity=0.9"] >= 0.9, best$reached_interval[1] == "btii",
          is.na(best$reached_lower[best$criterion == "youden"]), "best-on-same-data" %in% best$notes$code)
stopifnot(nrow(best_cut_offs(fit, "youden", min.sensitivity = 1, min.specificity = 1)) == 0)
drawn <- vexroc(state ~ a, study, ci.method = "bca", seed = 5)
stopifnot(identical(drawn$areas, vexroc(state ~ a, study[n:1, ], ci.method = "bca", seed = 5)$areas),
          drawn$areas$lower != vexroc(state ~ a, study, ci.method = "bca", seed = 6)$areas$lower,
          drawn$areas$interval == "bca", drawn$areas$error == "delong")

# Weights that are all alike change nothing; those of probability move the area.
weighted <- vexroc(state ~ a, study, weight = rep(0.3, n), weight.kind = "probability")
near(unlist(weighted$areas[c("area", "lower", "upper")]),
     unlist(vexroc(state ~ a, study, ci.method = "logit")$areas[c("area", "lower", "upper")]))
heavy <- vexroc(state ~ a, study, weight = 1 + state * (a > 1), weight.kind = "probability")
stopifnot(heavy$areas$area > weighted$areas$area, heavy$areas$error == "weighted", heavy$areas$p_method == "wald",
          pr_area(heavy)$pr_area > pr_area(weighted)$pr_area)
near(operating_points(heavy, 1)$prevalence, pr_area(heavy)$prevalence)

# Risks, and risks that are none.
risk <- data.frame(state = study$state, risk = plogis(study$a - 0.8))
benefit <- net_benefit(vexroc(state ~ risk, risk), at = c(0.2, 0.4))
called <- vapply(c(0.2, 0.4), function(cut) risk$risk >= cut, logical(n))
near(benefit$net_benefit, colMeans(called & positive) - colMeans(called & !positive) * c(0.25, 2 / 3))
stopifnot("not-calibrated" %in% quietly(net_benefit(vexroc(state ~ I(risk / 4), risk), at = 0.2))$cautions$code)

# Peers.
with_ties <- wilcox.test(a ~ state, study, exact = FALSE)
near(vexroc(state ~ a, study, exact = FALSE)$areas$p_value, with_ties$p.value)
apart <- round(rnorm(30), 6)
sick <- rep(0:1, 15)
near(vexroc(apart, sick, exact = TRUE, alternative = "greater")$areas$p_value,
     wilcox.test(apart[sick == 1], apart[sick == 0], alternative = "greater")$p.value)
if (requireNamespace("pROC", quietly = TRUE)) {
  roc <- pROC::roc(study$state, study$a, levels = 0:1, direction = "<")
  delong <- vexroc(state ~ a, study, ci.method = "wald-delong", p.method = "wald")$areas
  near(c(delong$lower, delong$area, delong$upper), c(pROC::ci.auc(roc, method = "delong")))
  columns <- c("threshold", "tp", "fp", "tn", "fn", "sensitivity", "specificity", "ppv", "npv", "accuracy", "youden")
  peer <- pROC::coords(roc, "all", ret = columns, transpose = FALSE)
  ours <- operating_points(fit)[seq_len(nrow(peer)), ]
  near(as.matrix(ours[c("true_positive", "false_positive", "true_negative", "false_negative", "sensitivity",
                        "specificity", "ppv", "npv", "accuracy")]), as.matrix(peer[2:10]))
  near(ours$youden + 1, peer$youden)
  for (focus in c("sp", "se")) {
    band <- list(roc, partial.auc = c(1, 0.8), partial.auc.focus = focus, allow.invalid.partial.auc.correct = TRUE)
    ours <- partial_area(fit, c(1, 0.8), focus)[1, ]
    near(ours$partial_area, do.call(pROC::auc, band))
    near(ours$standardized, do.call(pROC::auc, c(band, partial.auc.correct = TRUE)))
  }
}

# What cannot be is refused in words that a user of R has.
refused <- list(
  "not of class data.frame" = quote(operating_points(study)),
  "best_cut_offs() finds" = quote(operating_points(fit, "best")),
  "prevalence" = quote(operating_points(fit, 1, prevalence = 2)),
  "`prevalence` is one" = quote(pr_area(fit, prevalence = NA)),
  "did you mean `prevalence`" = quote(operating_points(fit, prevalance = 0.1)),
  "is no test" = quote(operating_points(fit, at = c(c = 1))), "beyond the values of a" =
    quote(operating_points(fit, at = -6)), "there are youden" = quote(best_cut_offs(fit, "yuden")),
  "cost" = quote(best_cut_offs(fit, "cost", cost.ratio = -1)), "`partial.auc` is two" = quote(partial_area(fit, 0.9)),
  "of one test" = quote(plot(operating_points(fit))),
  "standardized area" = quote(partial_area(fit, partial.auc.correct = TRUE)), "risk" = quote(net_benefit(fit)),
  "\"wald-delong\"" = quote(vexroc(state ~ a, study, ci.method = "delong")), "it is `weight.kind`" =
    quote(vexroc(state ~ a, study, weight_kind = "counts")), "`seed` is a whole" = quote(vexroc(1:2, 0:1, seed = 0.5)),
  "`ci.method` names" = quote(vexroc(state ~ a, study, interval = "wald")),
  "take the p value by wald" = quote(vexroc(state ~ a, study, null = 0.6, p.method = "mann-whitney")),
  "null" = quote(vexroc(state ~ a, study, null = 1)), "weight" = quote(vexroc(1:2, 0:1, weight.kind = "probability")))
for (i in seq_along(refused)) {
  said <- tryCatch({ eval(refused[[i]]); "no error" }, error = conditionMessage)
  if (!grepl(names(refused)[i], said, fixed = TRUE)) stop("expected '", names(refused)[i], "', got '", said, "'")
}
pdf(NULL)
plot(benefit, legend = FALSE)
plot(operating_points(men), xlab = "cut-off")
for (table in list(points, best, partial_area(fit), pr_area(by_sex), benefit, mann_whitney(fit))) print(table)
