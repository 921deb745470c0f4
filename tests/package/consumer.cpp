#include <vexrocproc/arraycalls.h>

int main()
{
    const double actual[] = {1, 0, 1, 0};
    const double predicted[] = {4, 2, 3, 1};
    const auc_res res = auc(actual, predicted, 4, nullptr, "include", "larger", "nonparam", 0.95);
    return res.area == 1.0 ? 0 : 1; // every positive case above every negative one
}
