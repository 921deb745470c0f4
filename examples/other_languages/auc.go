// Go: an area and a curve through cgo.
//
//	CGO_CFLAGS=$(pkg-config --cflags vexrocproc) CGO_LDFLAGS=$(pkg-config --libs vexrocproc) \
//		LD_LIBRARY_PATH=<folder of the libraries> go run auc.go
package main

/*
#include <stdlib.h>
#include <vexrocproc/arraycalls.h>
*/
import "C"

import (
	"errors"
	"fmt"
	"log"
	"unsafe"
)

// Words of the options, allocated once.
var (
	include  = C.CString("include")
	larger   = C.CString("larger")
	nonparam = C.CString("nonparam")
)

func pointer(values []float64) *C.double {
	if len(values) == 0 {
		return nil
	}
	return (*C.double)(unsafe.Pointer(&values[0]))
}

// rocCurve returns rows of cut-off, 1 - specificity and sensitivity.
func rocCurve(actual, predicted []float64) ([][3]float64, error) {
	curve := C.roccurve(pointer(actual), pointer(predicted), C.int(len(actual)), nil, include, larger)
	if curve.rows == nil {
		return nil, errors.New("roccurve: not enough memory")
	}
	defer C.release_roccurve_res(curve)
	rows := unsafe.Slice((*[3]float64)(unsafe.Pointer(curve.rows)), int(curve.count))
	return append([][3]float64(nil), rows...), nil
}

func main() {
	sick := []float64{1, 1, 1, 1, 1, 0, 0, 0, 0, 0}
	marker := []float64{7.1, 6.4, 8.0, 5.2, 6.9, 4.8, 5.9, 5.2, 3.3, 4.1}

	area := C.auc(pointer(sick), pointer(marker), C.int(len(sick)), nil, include, larger, nonparam, 0.95)
	fmt.Printf("area %.3f, standard error %.3f\n", float64(area.area), float64(area.stdError))

	rows, err := rocCurve(sick, marker)
	if err != nil {
		log.Fatal(err)
	}
	fmt.Printf("%d points, the first at cut-off %.2f\n", len(rows), rows[0][0])
}
