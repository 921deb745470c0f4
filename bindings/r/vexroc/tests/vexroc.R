library(vexroc)

expect_error <- function(expression, message) {
  said <- tryCatch({ expression; "no error" }, error = conditionMessage)
  if (!grepl(message, said, fixed = TRUE)) stop("expected '", message, "', got '", said, "'")
}

#' Codes of the cautions of which an expression warns; its value is lost.
cautions_of <- function(expression) {
  codes <- character()
  withCallingHandlers(expression, vexroc_caution = function(caution) {
    codes <<- c(codes, caution$code)
    invokeRestart("muffleWarning")
  })
  codes
}

quietly <- function(expression) suppressWarnings(expression, classes = "vexroc_caution")

# Published: Hanley and McNeil (1982), ratings 1 to 5 of 58 normal and 51 abnormal images, a row each or counted.
normal <- c(33, 6, 6, 11, 2)
abnormal <- c(3, 2, 2, 11, 33)
rating <- data.frame(state = rep(c("normal", "abnormal"), c(58, 51)), rating = c(rep(1:5, normal), rep(1:5, abnormal)))
published <- vexroc(state ~ rating, rating, positive = "abnormal", ci.method = "wald")
stopifnot(round(published$areas$area, 3) == 0.893, round(published$areas$std_error, 3) == 0.032,
          nrow(published$cautions) == 0, identical(published$notes$code, "ties"))
counts <- data.frame(state = rep(c("normal", "abnormal"), each = 5), rating = rep(1:5, 2), cases = c(normal, abnormal))
counted <- vexroc(state ~ rating, counts, positive = "abnormal", count = cases, ci.method = "wald")
stopifnot(identical(counted$areas, published$areas))

set.seed(7)
n <- 200
study <- data.frame(state = factor(sample(c("well", "ill"), n, TRUE), c("well", "ill")),
                    sex = sample(c("f", "m"), n, TRUE))
study$a <- round(rnorm(n) + (study$state == "ill"), 1)
study$b <- study$a + rnorm(n)
study$c <- -study$b + rnorm(n)
study$b[3:30] <- NA
study$state[5] <- NA
fit <- vexroc(state ~ a + b, study, pr = TRUE)
stopifnot(fit$left_out == 1, fit$areas$left_out == c(0, 27), nrow(confint(fit)) == 2, nrow(fit$cautions) == 0)

# The area is the share of pairs in the right order, the curve counts them, and only measured points have cut-offs.
known <- !is.na(study$state)
ill <- study$a[known & study$state == "ill"]
well <- study$a[known & study$state == "well"]
stopifnot(all.equal(fit$areas$area[1], mean(outer(ill, well, ">") + outer(ill, well, "==") / 2), tolerance = 1e-14))
curve <- subset(as.data.frame(fit, what = "curve"), test == "a")
stopifnot(all.equal(curve$sensitivity, vapply(curve$cut_off, function(cut) mean(ill >= cut), 0)))
points <- subset(as.data.frame(fit, what = "precision_recall"), test == "a")
stopifnot(identical(is.na(points$cut_off), points$interpolated), any(points$interpolated),
          all.equal(points$recall[!points$interpolated],
                    vapply(points$cut_off[!points$interpolated], function(cut) mean(ill >= cut), 0)))

# The line of a test is the same in every question; its interval is the one that is asked for.
three <- vexroc(state ~ a + b + c, study, direction = c(c = "smaller"))
pairs <- compare(three)
complete <- compare(three, cases = "complete")
stopifnot(identical(pairs$areas, three$areas[names(pairs$areas)]), identical(three$areas[1:2, ], fit$areas),
          identical(pairs$comparisons$positive + pairs$comparisons$negative, c(172, 199, 172)),
          complete$areas$positive + complete$areas$negative == 172, complete$areas$ties[1], three$areas$area > 0.5)
groups <- as.data.frame(compare(vexroc(state ~ a + b | sex, study), conf.level = 0.99))
stopifnot(nrow(groups) == 2, groups$group1 == "f",
          all.equal(groups$upper - groups$lower, 2 * qnorm(0.995) * groups$std_error_difference))

if (requireNamespace("pROC", quietly = TRUE)) {
  both <- study[known & !is.na(study$b), ]
  roc <- function(test) pROC::roc(both$state, test, levels = c("well", "ill"), direction = "<")
  peer <- pROC::roc.test(roc(both$b), roc(-both$c), method = "delong")
  pair <- subset(pairs$comparisons, test1 == "b" & test2 == "c")
  delong <- vexroc(list(b = both$b), both$state, ci.method = "wald-delong")$areas
  stopifnot(all.equal(c(pair$area1, pair$area2), unname(peer$estimate)),
            all.equal(pair$z, unname(peer$statistic)), all.equal(pair$p_value, peer$p.value),
            all.equal(delong$std_error, sqrt(pROC::var(roc(both$b), method = "delong"))))
}

# Far tails, and none where there is no error.
far <- vexroc(c(1:100, 61:160), rep(0:1, each = 100), p.method = "wald")$areas
z <- (far$area - 0.5) / far$std_error
stopifnot(all.equal(far$log10_p, (pnorm(-abs(z), log.p = TRUE) + log(2)) / log(10)), far$p_value > 0,
          far$p_value < 1e-50)
apart <- quietly(vexroc(1:30, rep(0:1, each = 15), ci.method = "wald", p.method = "wald"))
stopifnot(apart$areas$std_error == 0, is.na(apart$areas$lower), is.na(apart$areas$upper),
          identical(apart$cautions$code, "zero-error"))

# States and groups by the library's rule, from every kind of column.
words <- data.frame(state = c("ill", "ill", "well", "well", "N/A", "NULL", "unknown"), test = c(3, 4, 1, 2, 9, 8, 7))
named <- quietly(vexroc(state ~ test, words, positive = "ill", negative = "well"))
stopifnot(named$areas$area == 1, named$left_out == c(2, 1), "missing-words" %in% named$notes$code,
          quietly(vexroc(state ~ test, words, positive = "ill", negative = others()))$areas$negative == 3,
          quietly(vexroc(state ~ test, words, positive = "ill", missing = "Unknown"))$areas$negative == 2)
labels <- list(c(0, 1, 1, 0), c(FALSE, TRUE, TRUE, FALSE), factor(c("b", "a", "a", "b"), c("b", "a")),
               structure(c(0, 2, 2, 0) * 2^-1074, class = "integer64"))
for (state in labels) stopifnot(quietly(vexroc(1:4, state))$areas$area == 0.5)
exact <- structure(c(-1, -2, 3, NA), class = "integer64") # the bits are not those of whole numbers
expect_error(vexroc(exact, c(0, 1, 0, 1)), "beyond 2^53")
for (locale in c("C", "C.UTF-8", "de_DE.UTF-8")) {
  suppressWarnings(Sys.setlocale("LC_COLLATE", locale))
  stopifnot(quietly(vexroc(1:4, c(0, 1, 0, 1), group = c("b", "b", "C", "C")))$areas$group == c("C", "b"))
}
close <- quietly(vexroc(1:4, c(FALSE, TRUE, FALSE, TRUE), group = c(0.3, 0.3, 0.1 + 0.2, 0.1 + 0.2)))
stopifnot(close$areas$positive == 1, !duplicated(close$areas$group))

# Every row that does not enter is counted, under one reason.
rows <- data.frame(state = c(0, 1, NA, 0, 1, 0, 1, 0, 1), test = c(1:7, NA, 9),
                   group = c("b", "C", "b", NA, "x", "b", "C", "b", "C"), weight = c(1, 1, 1, 1, 1, NA, 0.4, 1.6, -1))
counted <- quietly(vexroc(state ~ test | group, rows, groups = c("b", "C"), weight = weight))
stopifnot(identical(counted$left_out, c("missing state" = 1, "missing group" = 1, "other group" = 1,
                                        "missing weight" = 1, "unusable weight" = 2)),
          counted$areas$left_out == c(1, 0), counted$areas$negative == c(1, 0), counted$areas$positive == c(0, 1))

# Each caution is a warning, a row and a line; a comparison repeats no warning.
says <- function(codes, ...) {
  said <- setdiff(cautions_of(...), "few-cases")
  if (!identical(said, codes)) stop("expected ", listed(codes), "; got ", listed(said))
}
listed <- function(codes) paste(c("the cautions", codes), collapse = " ")
few <- quietly(vexroc(list(a = c(1, 4, 2, 3, 5), b = c(1, 3, 2, 4, 5)), c(0, 1, 0, 1, 1)))
stopifnot(!"few-cases" %in% few$cautions$code, "few-cases" %in% cautions_of(compare(few)))
below <- quietly(vexroc(state ~ c, study))
stopifnot(grepl("direction = c(c = \"smaller\")", below$cautions$text, fixed = TRUE), nrow(below$cautions) == 1)
grouped <- vexroc(state ~ a + b | sex, study)
says("no-negative", vexroc(1:3, c(1, 1, 1), positive = 1))
says("weight-counts-only", vexroc(state ~ a, study, weight = rep(2, n)))
says(character(), vexroc(state ~ a, study, weight = rep(2, n), weight.kind = "counts"))
says("distribution-changed", vexroc(state ~ a, study, distribution = "bi-negative"))
says("groups-ignored", compare(grouped, "paired"))
shown <- capture.output(quietly(summary(vexroc(state ~ a, study, distribution = "bi-negative"))), pairs,
                        quietly(vexroc(state ~ test, rows, weight = weight)))
for (text in c("standard error: hanley-mcneil", "^caution: the standard error is nonparametric", "^note: ",
               "smaller ones of c", "b\\s+[0-9]+\\s+[0-9]+\\s+27 0", "missing weight 1",
               "^ test1 test2 +(z|p_value|lower|upper)"))
  if (!any(grepl(text, shown))) stop("not printed: ", text)

# Formulas mean what they mean in lm.
same <- function(a, b) stopifnot(all.equal(a$areas, b$areas, check.attributes = FALSE))
two <- vexroc(state ~ a + b, study)
same(vexroc(state ~ a + b + sex - sex, study), two)
same(vexroc(state ~ . - sex - c, study), two)
same(vexroc(state ~ cbind(a, b), study), two)
same(vexroc(as.matrix(study[c("a", "b")]), study["state"]), two)
same(vexroc(state ~ a, study, subset = b > 0, count = 1 + (a > 0)),
     with(subset(study, b > 0), vexroc(list(a = a), state, count = 1 + (a > 0))))
stopifnot(quietly(vexroc(list(a = 1:2, 3:4), 0:1))$areas$test == c("a", "test2"))

pdf(NULL)
third <- data.frame(state = c("Ill", "control", "Ill"), test = 1:3, third = c("u", "v", "w"))
one <- quietly(vexroc(c(1, 2, 3), state = c(1, 1, 1), positive = 1))
stopifnot(is.na(one$areas$area), is.null(as.data.frame(one, what = "curve")))
errors <- list(
  "positive = \"ill\", negative = others()" = quote(vexroc(state ~ test, words, positive = "ill")),
  "\"well\" (2)" = quote(vexroc(state ~ test, words, positive = "ill")),
  "never holds \"sick\"" = quote(vexroc(study$a, study$state, positive = "sick")),
  "are positive is not said" = quote(vexroc(state ~ test, third)),
  "is 1 in every case" = quote(vexroc(1:3, c(1, 1, 1))), "every case is missing" = quote(vexroc(1:2, c(NA, NA))),
  "different numbers with fractions" = quote(vexroc(study$a > 0, study$a, positive = 2.1)),
  "class factor, and tests are numbers: is it the state" = quote(vexroc(study$state, study$a)),
  "is the order wrong" = quote(vexroc(c(0, 1, 0, 1), c(3, 5, 8, 9))),
  "the tests come first" = quote(vexroc(response = study$state, predictor = study$a)),
  "\"<5\" in row 2 is none, nor is 1 other" = quote(vexroc(list(t = c("3", "<5", NA, "x")), c(0, 1, 0, 1))),
  "two tests are called 'a'" = quote(vexroc(list(a = 1:2, a = 2:1), 0:1)),
  "has 3 values; the state has 2" = quote(vexroc(1:3, c(0, 1))),
  "has 3 values; the state" = quote(vexroc(1:2, 0:1, weight = 1:3)),
  "do not go together" = quote(vexroc(1:2, 0:1, weight = 1:2, count = 1:2)),
  "whole" = quote(vexroc(1:2, 0:1, count = c(1, 1.5))),
  "between 0 and 1" = quote(vexroc(state ~ a, study, level = 95)),
  "one number" = quote(confint(fit, level = c(.9, .95))),
  "two names" = quote(compare(fit, level = .9, conf.level = .8)),
  "\"larger\" or \"smaller\"" = quote(vexroc(state ~ a, study, direction = "up")),
  "names zz, which is no test" = quote(vexroc(state ~ a, study, direction = c(zz = "smaller"))),
  "did you mean `level`" = quote(vexroc(state ~ a, study, levl = 0.9)),
  "interaction" = quote(vexroc(state ~ a * b, study)),
  "`alternative` is" = quote(compare(fit, conf.level = .99, alternative = "lower")),
  "print() does not know" = quote(print(fit, digitz = 3)), "summary() does not know" = quote(summary(fit, level = .9)),
  "confint() does not know" = quote(confint(fit, metod = 1)),
  "plot() does not know `conf`" = quote(plot(fit, conf = 1)),
  "`parm` is zz" = quote(confint(fit, "zz")), "two tests" = quote(compare(vexroc(state ~ a, study))),
  "name two of them" = quote(vexroc(state ~ test | third, third, positive = "Ill")),
  "it is u, z" = quote(vexroc(state ~ test | third, third, positive = "Ill", groups = c("u", "z"))),
  "class factor" = quote(vexroc(1:2, 0:1, weight = factor(1:2))),
  "has only the value" = quote(vexroc(1:2, 0:1, group = 0:0)), "no case" = quote(vexroc(state ~ a, study[0, ])),
  "there is no positive case" = quote(vexroc(1:2, 0:1, weight = c(1, NA))),
  "there is no negative case" = quote(plot(one)), "pr = TRUE" = quote(plot(close, "precision_recall")))
for (message in names(errors)) expect_error(eval(errors[[message]]), message)
print(summary(fit))
print(pairs)
plot(fit, xlab = "false positives", col = 1:2)
plot(fit, add = TRUE)
plot(fit, "precision_recall")
