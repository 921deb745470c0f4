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
study <- data.frame(state = factor(sample(c("well", "ill"), n, TRUE), c("well", "ill")), sex = sample(c("f", "m"), n, TRUE))
study$a <- round(rnorm(n) + (study$state == "ill"), 1)
study$b <- study$a + rnorm(n)
study$b[3] <- NA
study$state[5] <- NA
fit <- vexroc(state ~ a + b, study, pr = TRUE)
stopifnot(fit$left_out == 1, fit$areas$positive + fit$areas$negative == c(n - 1, n - 2), nrow(confint(fit)) == 2)
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
expect_error(vexroc(state ~ sex, study), "tests are numbers")
expect_error(vexroc(study$a, state = study$a), "name the positive one")
expect_error(vexroc(study$a, study$state, positive = "sick"), "the state is never sick; it is well, ill")
expect_error(vexroc(1:3, c(0, 1)), "has 3 values; the state has 2")
expect_error(vexroc(state ~ a, study, level = 95), "between 0 and 1")
expect_error(vexroc(state ~ a, study, levl = 0.9), "unknown argument: levl")
expect_error(compare(vexroc(state ~ a, study)), "two tests")
print(summary(fit))
print(compare(fit))
pdf(NULL)
plot(fit)
