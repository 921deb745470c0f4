library(vexroc)

expect_error <- function(expression, message) {
  said <- tryCatch({ expression; "no error" }, error = conditionMessage)
  if (!grepl(message, said, fixed = TRUE)) stop("expected '", message, "', got '", said, "'")
}

# Published: Hanley and McNeil (1982), ratings 1 to 5 of 58 normal and 51 abnormal images.
normal <- rep(1:5, c(33, 6, 6, 11, 2))
abnormal <- rep(1:5, c(3, 2, 2, 11, 33))
rating <- data.frame(state = rep(c("normal", "abnormal"), c(58, 51)), rating = c(normal, abnormal))
published <- vexroc(state ~ rating, rating, positive = "abnormal")
stopifnot(round(published$areas$area, 3) == 0.893, round(published$areas$std_error, 3) == 0.032)

set.seed(7)
n <- 200
study <- data.frame(state = factor(sample(c("well", "ill"), n, TRUE), c("well", "ill")),
                    sex = sample(c("f", "m"), n, TRUE))
study$a <- round(rnorm(n) + (study$state == "ill"), 1)
study$b <- study$a + rnorm(n)
study$b[3] <- NA
study$state[5] <- NA
fit <- vexroc(state ~ a + b, study, pr = TRUE)
stopifnot(fit$left_out == 1, fit$areas$left_out == 0:1, fit$areas$positive + fit$areas$negative == c(n - 1, n - 2),
          nrow(confint(fit)) == 2)
pair <- as.data.frame(compare(fit))
groups <- as.data.frame(compare(vexroc(state ~ a + b | sex, study)))
stopifnot(nrow(pair) == 1, nrow(groups) == 2, groups$first == "f")

# The area is the share of pairs in the right order, the curve counts them.
known <- !is.na(study$state)
ill <- study$a[known & study$state == "ill"]
well <- study$a[known & study$state == "well"]
stopifnot(all.equal(fit$areas$area[1], mean(outer(ill, well, ">") + outer(ill, well, "==") / 2), tolerance = 1e-14))
curve <- subset(as.data.frame(fit, what = "curve"), test == "a")
stopifnot(all.equal(curve$sensitivity, vapply(curve$cut_off, function(cut) mean(ill >= cut), 0)))

if (requireNamespace("pROC", quietly = TRUE)) {
  complete <- study[known & !is.na(study$b), ]
  a <- pROC::roc(complete$state, complete$a, levels = c("well", "ill"), direction = "<", quiet = TRUE)
  b <- pROC::roc(complete$state, complete$b, levels = c("well", "ill"), direction = "<", quiet = TRUE)
  test <- pROC::roc.test(a, b, method = "delong")
  stopifnot(all.equal(pair$area1, as.numeric(a$auc)), all.equal(pair$z, unname(test$statistic)),
            all.equal(pair$significance, test$p.value))
}

one <- vexroc(c(1, 2, 3), state = c(1, 1, 1), positive = 1)
stopifnot(is.na(one$areas$area), is.null(as.data.frame(one, what = "curve")))

# Every row that does not enter is counted, under one reason.
rows <- data.frame(state = c(0, 1, NA, 0, 1, 0, 1, 0, 1), test = c(1:7, NA, 9),
                   group = c("b", "C", "b", NA, "x", "b", "C", "b", "C"), weight = c(1, 1, 1, 1, 1, NA, 0.4, 1.6, -1))
counted <- vexroc(state ~ test | group, rows, groups = c("b", "C"), weight = weight)
stopifnot(identical(counted$left_out, c("without state" = 1L, "without group" = 1L, "of other groups" = 1L,
                                        "without weight" = 1L, "with a weight below 1" = 2L)),
          counted$areas$left_out == c(1, 0), counted$areas$negative == c(1, 0), counted$areas$positive == c(0, 1))
shown <- capture.output(summary(vexroc(state ~ a, study, distribution = "bi-negative")), compare(fit),
                        vexroc(state ~ test, rows, weight = weight))
for (text in c("Standard error: nonparametric;", "are nonparametric \\(430103", "b\\s+[0-9]+\\s+[0-9]+\\s+1 0",
               "1 without weight", "rounded with halves up: 1"))
  stopifnot(any(grepl(text, shown)))

# Formulas mean what they mean in lm; groups have one order in every locale and are told apart to the last bit.
same <- function(a, b) stopifnot(all.equal(a$areas, b$areas, check.attributes = FALSE))
same(vexroc(state ~ a + b + sex - sex, study), fit)
same(vexroc(state ~ . - sex, study), fit)
same(vexroc(state ~ cbind(a, b), study), fit)
same(vexroc(as.matrix(study[c("a", "b")]), study$state), fit)
same(vexroc(state ~ a, study, subset = b > 0, weight = 1 + (a > 0)),
     with(subset(study, b > 0), vexroc(list(a = a), state, weight = 1 + (a > 0))))
for (locale in c("C", "C.UTF-8", "de_DE.UTF-8")) {
  suppressWarnings(Sys.setlocale("LC_COLLATE", locale))
  stopifnot(vexroc(1:4, c(0, 1, 0, 1), group = c("b", "b", "C", "C"))$areas$group == c("C", "b"))
}
close <- vexroc(1:4, c(FALSE, TRUE, FALSE, TRUE), positive = 1, group = c(0.3, 0.3, 0.1 + 0.2, 0.1 + 0.2))
stopifnot(close$areas$positive == 1, !duplicated(close$areas$group))
stopifnot(vexroc(list(a = 1:2, 3:4), 0:1)$areas$test == c("a", "test2"))

few <- data.frame(state = c("Ill", "control", "Ill"), test = 1:3, third = c("u", "v", "w"))
pdf(NULL)
errors <- list(
  "tests are numbers" = quote(vexroc(state ~ sex, study)), "name the positive one" = quote(vexroc(study$a, study$a)),
  "has the values Ill, control: name the positive one" = quote(vexroc(state ~ test, few)),
  "the state is never sick; it is well, ill" = quote(vexroc(study$a, study$state, positive = "sick")),
  "has 3 values; the state has 2" = quote(vexroc(1:3, c(0, 1))),
  "has 3 values; the state" = quote(vexroc(1:2, 0:1, weight = 1:3)),
  "between 0 and 1" = quote(vexroc(state ~ a, study, level = 95)),
  "one number" = quote(confint(fit, level = c(.9, .95))),
  "\"larger\" or \"smaller\"" = quote(vexroc(state ~ a, study, direction = "up")),
  "unknown argument: levl" = quote(vexroc(state ~ a, study, levl = 0.9)),
  "interaction" = quote(vexroc(state ~ a * b, study)),
  "`parm` is zz" = quote(confint(fit, "zz")), "two tests" = quote(compare(vexroc(state ~ a, study))),
  "name two of them" = quote(vexroc(state ~ test | third, few, positive = "Ill")),
  "it is u, z" = quote(vexroc(state ~ test | third, few, positive = "Ill", groups = c("u", "z"))),
  "class factor" = quote(vexroc(1:2, 0:1, weight = factor(1:2))),
  "has only the value" = quote(vexroc(1:2, 0:1, group = 0:0)), "every case" = quote(vexroc(1:2, c(NA, NA))),
  "no case" = quote(vexroc(state ~ a, study[0, ])),
  "no case with the positive state is left (430004" = quote(vexroc(1:2, 0:1, weight = c(1, NA))),
  "pr = TRUE" = quote(plot(close, "precision_recall")))
for (message in names(errors)) expect_error(eval(errors[[message]]), message)
print(summary(fit))
print(compare(fit))
plot(fit, xlab = "false positives", col = 1:2)
plot(fit, add = TRUE)
plot(fit, "precision_recall")
